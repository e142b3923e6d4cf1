#include "shell/frmabout.h"

#include "platform/picture.h"
#include "version.h"

#include <QApplication>
#include <QFont>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QShowEvent>

namespace varnock {

BackdropCanvas::BackdropCanvas(QWidget *parent) : QWidget(parent) {
    setFocusPolicy(Qt::NoFocus);
}

void BackdropCanvas::SetBackdrop(const QPixmap &picture) {
    backdrop_ = picture;
    update();
}

void BackdropCanvas::paintEvent(QPaintEvent *) {
    if (backdrop_.isNull()) {
        return;
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, backdrop_);
}

namespace {

// "System" is whatever the desktop gives the application as its font. Sizes
// are the window's own pixels, as in the main window's lists and labels.
QFont SystemFont(int pixelSize, bool bold) {
    QFont font = QApplication::font();
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    return font;
}

QLabel *MakeLabel(QWidget *parent, const QString &text, const QRect &geometry, int pixelSize,
                  bool bold) {
    auto *label = new QLabel(text, parent);
    label->setGeometry(geometry);
    label->setFont(SystemFont(pixelSize, bold));
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(false);
    label->setTextInteractionFlags(Qt::NoTextInteraction);
    label->setAutoFillBackground(true);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, Qt::black);
    label->setPalette(palette);
    return label;
}

QPointer<frmAbout> &OpenAboutSlot() {
    static QPointer<frmAbout> open;
    return open;
}

} // namespace

frmAbout::frmAbout(QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint) {
    setWindowTitle(QStringLiteral("About Varnock"));
    setFixedSize(600, 177);
    setSizeGripEnabled(false);
    setModal(true);

    Label1 = MakeLabel(this, QStringLiteral("Varnock"), QRect(160, 14, 420, 59), 36, true);
    Label1->setObjectName(QStringLiteral("Label1"));

    // Replaced by the real version as the dialog opens.
    Label2 = MakeLabel(this, QStringLiteral("version"), QRect(160, 85, 420, 19), 12, true);
    Label2->setObjectName(QStringLiteral("Label2"));

    // Both Return (default) and Escape (see keyPressEvent) act as a click.
    PushButton1 = new QPushButton(QStringLiteral("&Close"), this);
    PushButton1->setObjectName(QStringLiteral("PushButton1"));
    PushButton1->setGeometry(330, 122, 80, 22);
    PushButton1->setAutoDefault(true);
    PushButton1->setDefault(true);
    connect(PushButton1, &QPushButton::clicked, this, [this] { PushButton1_Action(); });

    Canvas1 = new BackdropCanvas(this);
    Canvas1->setObjectName(QStringLiteral("Canvas1"));
    Canvas1->setGeometry(20, 14, 128, 128);
    Canvas1->SetBackdrop(VarnockFrets128b());

    Label3 = MakeLabel(this, QStringLiteral("\u00A9 2026 Helmford. All rights reserved."),
                       QRect(160, 154, 420, 20), 12, false);
    Label3->setObjectName(QStringLiteral("Label3"));

    PushButton1->setFocus();
}

int frmAbout::ShowModal() {
    return exec();
}

void frmAbout::Event_Open() {
    Label2->setText(QStringLiteral("v") + QString::fromUtf8(kShortVersion));
}

void frmAbout::PushButton1_Action() {
    close();
}

void frmAbout::showEvent(QShowEvent *event) {
    // Only the program's own show is an opening, not the window system
    // showing the dialog again after it had been minimised by the desktop.
    if (!event->spontaneous()) {
        Event_Open();
    }
    QDialog::showEvent(event);
}

void frmAbout::keyPressEvent(QKeyEvent *event) {
    // The button is also the cancel button: Escape clicks it rather than
    // taking QDialog's own reject path, so the one close handler runs.
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        PushButton1->click();
        return;
    }
    QDialog::keyPressEvent(event);
}

void ShowAbout(QWidget *parent) {
    QPointer<frmAbout> &open = OpenAboutSlot();
    if (open) {
        open->raise();
        open->activateWindow();
        return;
    }
    // Held by a guarded pointer: should the parent go away while the dialog
    // runs, it takes the dialog with it and there is nothing left to delete.
    QPointer<frmAbout> dialog = new frmAbout(parent);
    open = dialog;
    dialog->ShowModal();
    delete dialog.data();
}

frmAbout *OpenAbout() {
    return OpenAboutSlot().data();
}

const QPixmap &VarnockFrets128b() {
    // Deliberately never freed: a pixmap must not outlive the QApplication's
    // paint machinery in a static destructor, and the picture is meant to last
    // as long as the process anyway.
    static const QPixmap *const picture =
        new QPixmap(LoadPicture(QStringLiteral("VarnockFrets128b.bmp")));
    return *picture;
}

} // namespace varnock
