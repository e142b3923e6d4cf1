// The lists drawn and the window's message boxes: a list's frame and
// headings look exactly as the desktop's Fusion style draws them, the look
// the window has always had, though no style draws them now; and MsgBox
// shows a real modal box once the window layer is in use.

#include "platform/listboxpaint.h"
#include "platform/msgbox.h"
#include "window/dialogs.h"

#include <QApplication>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleOptionFrame>
#include <QStyleOptionHeader>
#include <QTimer>
#include <gtest/gtest.h>

#include <memory>

using namespace varnock;

namespace {

struct ListCase {
    const char *name;
    int columns, width, height;
    bool mirrored;
};
const ListCase kLists[] = {
    {"chart", 23, 810, 136, false},
    {"chart left-handed", 23, 810, 136, true},
    {"notes", 4, 320, 46, false},
    {"narrow odd widths", 3, 101, 44, false},
};

// The list without rows as the Fusion style drew it: a plain box, the base
// colour inside, and a raised header section per column.
QImage FusionList(const Listbox &list, QSize size, const ListboxLook &look) {
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setFont(look.font);
    QStyleOptionFrame frame;
    frame.state = QStyle::State_Enabled;
    frame.palette = look.palette;
    frame.rect = QRect(QPoint(0, 0), size);
    frame.frameShape = QFrame::Box;
    frame.lineWidth = 1;
    fusion->drawControl(QStyle::CE_ShapedFrame, &frame, &p);
    const QRect inner = frame.rect.adjusted(1, 1, -1, -1);
    p.setClipRect(inner);
    p.fillRect(inner, look.palette.base());
    for (Int c = 0; c < list.ColumnCount(); ++c) {
        QStyleOptionHeader header;
        header.state = QStyle::State_Enabled | QStyle::State_Raised;
        header.palette = look.palette;
        header.rect = ListboxCellPlace(list, size, 0, c, look);
        header.rect.setTop(1);
        header.rect.setHeight(kListboxHeadingHeight);
        header.text = QString::fromStdString(list.Heading(c));
        header.textAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        header.position = QStyleOptionHeader::Middle;
        fusion->drawControl(QStyle::CE_Header, &header, &p);
    }
    return image;
}

TEST(ListboxPaint, FrameAndHeadingsAreTheFusionStylesPixelForPixel) {
    for (const ListCase &row : kLists) {
        Listbox list(row.columns, 23);
        for (Int c = 0; c < row.columns; ++c)
            list.SetHeading(c, c % 7 == 6 ? std::to_string(c) + "+" : std::to_string(c));
        ListboxLook look{QFont(QStringLiteral("DejaVu Sans"))};
        look.font.setBold(true);
        look.font.setPixelSize(12);
        look.mirrorColumns = row.mirrored;
        const QSize size(row.width, row.height);
        QImage ours(size, QImage::Format_ARGB32_Premultiplied);
        ours.fill(Qt::white);
        QPainter p(&ours);
        PaintListbox(p, list, size, look);
        p.end();
        EXPECT_EQ(ours, FusionList(list, size, look)) << row.name;
    }
}

TEST(MsgBox, ShowsAModalPlainTextBoxTitledVarnockWithAnOkButton) {
    QString title, text;
    bool plain = false, modal = false, hasOk = false;
    // The box is looked for from inside its own event loop.
    std::function<void()> poll = [&] {
        QMessageBox *box = nullptr;
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (auto *found = qobject_cast<QMessageBox *>(widget); found && found->isVisible())
                box = found;
        if (box == nullptr) {
            QTimer::singleShot(10, poll);
            return;
        }
        modal = box->isModal() || QApplication::activeModalWidget() == box;
        title = box->windowTitle();
        text = box->text();
        plain = box->textFormat() == Qt::PlainText;
        hasOk = box->button(QMessageBox::Ok) != nullptr;
        hasOk ? box->button(QMessageBox::Ok)->click() : box->reject();
    };
    QTimer::singleShot(0, poll);
    UseMessageDialogs();
    const MsgBoxHandler previous = SetMsgBoxHandler({});
    MsgBox("Error reading preference: Settings - Frets");
    SetMsgBoxHandler(previous);
    EXPECT_EQ(title, "Varnock");
    EXPECT_EQ(text, "Error reading preference: Settings - Frets");
    EXPECT_TRUE(plain && hasOk && modal);
}

} // namespace
