// The About box, driven as a user would: opened modally, closed by keys.

#include "platform/picture.h"
#include "shell/frmabout.h"
#include "support.h"
#include "version.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>

namespace {

using varnock::frmAbout;
using varnock::OpenAbout;
using varnock::ShowAbout;
using varnock::VarnockFrets128b;

// Runs ShowAbout(parent) and, once the dialog is up, `act` on it. Should the
// dialog still be open a few seconds later, the test fails and the dialog is
// closed, so a broken close never hangs the run.
void WithModalAbout(QWidget *parent, const std::function<void(frmAbout &)> &act) {
    QObject guard;
    bool acted = false;
    QTimer::singleShot(0, &guard, [&] {
        frmAbout *open = OpenAbout();
        ASSERT_NE(open, nullptr);
        EXPECT_EQ(QApplication::activeModalWidget(), open);
        acted = true;
        act(*open);
    });
    QTimer::singleShot(5000, &guard, [] {
        if (frmAbout *open = OpenAbout()) {
            ADD_FAILURE() << "the About box did not close";
            open->done(QDialog::Rejected);
        }
    });
    ShowAbout(parent);
    EXPECT_TRUE(acted);
    EXPECT_EQ(OpenAbout(), nullptr);
}

QString Version() {
    return QStringLiteral("v") + QString::fromUtf8(varnock::kShortVersion);
}

TEST(AboutBox, IsAFixedDialogWithTheVersionAndOneButton) {
    frmAbout about;
    EXPECT_EQ(about.windowTitle(), QStringLiteral("About Varnock"));
    EXPECT_TRUE(about.isModal());
    EXPECT_FALSE(about.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
    EXPECT_EQ(about.Label1->text(), QStringLiteral("Varnock"));
    EXPECT_EQ(about.Label2->text(), QStringLiteral("version")) << "replaced only at opening";
    EXPECT_FALSE(about.Label3->text().isEmpty());
    EXPECT_TRUE(about.PushButton1->isDefault());
    EXPECT_EQ(about.PushButton1->text(), QStringLiteral("&Close"));
    // Only the button takes the focus.
    const QWidget *others[] = {about.Label1, about.Label2, about.Label3, about.Canvas1};
    for (const QWidget *w : others)
        EXPECT_EQ(w->focusPolicy(), Qt::NoFocus) << w->objectName().toStdString();

    about.show();
    about.resize(900, 400);
    EXPECT_EQ(about.size(), QSize(600, 177)) << "the dialog must not be resizable";
    EXPECT_EQ(about.Label2->text(), Version());
    EXPECT_TRUE(about.Label2->text().at(1).isDigit());
    // Each opening sets it again.
    about.Label2->setText(QStringLiteral("version"));
    about.hide();
    about.show();
    EXPECT_EQ(about.Label2->text(), Version());
}

TEST(AboutBox, TextSizesAreTheWindowsOwnPixels) {
    // Each label's size and weight, and the ink of its text within the label.
    frmAbout about;
    about.show();
    about.Label2->setText(QStringLiteral("v1.2"));
    const struct {
        QLabel *label;
        int pixelSize;
        bool bold;
        QRect ink;
    } labels[] = {
        {about.Label1, 36, true, QRect(128, 15, 165, 28)},
        {about.Label2, 12, true, QRect(195, 5, 29, 9)},
        {about.Label3, 12, false, QRect(98, 4, 224, 13)},
    };
    const QImage shown = testsupport::Grab(&about);
    for (const auto &l : labels) {
        const std::string name = l.label->objectName().toStdString();
        EXPECT_EQ(l.label->font().pixelSize(), l.pixelSize) << name;
        EXPECT_EQ(l.label->font().bold(), l.bold) << name;
        const QRect ink =
            testsupport::InkBox(shown, l.label->geometry()).translated(-l.label->pos());
        EXPECT_EQ(ink, l.ink) << name;
    }
}

TEST(AboutBox, EveryWayOfClosingEndsItAndNothingElse) {
    QMainWindow main;
    main.show();
    const QString title = main.windowTitle();
    const std::function<void(frmAbout &)> closers[] = {
        [](frmAbout &about) { QTest::keyClick(&about, Qt::Key_Return); },
        [](frmAbout &about) { QTest::keyClick(&about, Qt::Key_Escape); },
        [](frmAbout &about) { about.PushButton1->click(); },
        [](frmAbout &about) { about.close(); }, // what the window's close button sends
    };
    for (int round = 0; round < 2; ++round)
        for (const auto &closeIt : closers) {
            QPointer<frmAbout> seen;
            WithModalAbout(&main, [&](frmAbout &about) {
                EXPECT_EQ(about.parentWidget(), &main);
                EXPECT_EQ(about.Label2->text(), Version());
                seen = &about;
                closeIt(about);
            });
            EXPECT_TRUE(seen.isNull()) << "a closed About box is gone";
        }
    EXPECT_TRUE(main.findChildren<frmAbout *>().isEmpty());
    EXPECT_TRUE(main.isVisible());
    EXPECT_EQ(main.windowTitle(), title);
}

TEST(AboutBox, ASecondRequestWhileOpenOnlyRaisesTheOpenOne) {
    QMainWindow main;
    main.show();
    WithModalAbout(&main, [&main](frmAbout &about) {
        ShowAbout(&main); // returns at once: no second dialog, no nested loop
        EXPECT_EQ(OpenAbout(), &about);
        EXPECT_EQ(main.findChildren<frmAbout *>().size(), 1);
        about.PushButton1->click();
    });
}

TEST(AboutPicture, ComesFromBesideTheBinaryOnceAndFillsTheCanvas) {
    const QString path = varnock::ResourcePath(QStringLiteral("VarnockFrets128b.bmp"));
    EXPECT_TRUE(
        QDir::cleanPath(path).startsWith(QDir::cleanPath(QStringLiteral(VARNOCK_BINARY_DIR))))
        << path.toStdString() << " must come from the build tree, not the sources";
    EXPECT_TRUE(varnock::LoadPicture(QStringLiteral("NoSuchPicture.bmp")).isNull());
    EXPECT_EQ(&VarnockFrets128b(), &VarnockFrets128b());
    const QImage picture = VarnockFrets128b().toImage();
    ASSERT_EQ(picture.size(), QSize(128, 128));

    QMainWindow main;
    main.show();
    WithModalAbout(&main, [&picture](frmAbout &about) {
        const QImage shown = about.Canvas1->grab().toImage();
        for (const QPoint p : {QPoint(0, 0), QPoint(64, 64), QPoint(127, 127), QPoint(30, 100)})
            EXPECT_EQ(shown.pixel(p), picture.pixel(p)) << p.x() << "," << p.y();
        // Without a picture the canvas is empty and the dialog works on.
        about.Canvas1->SetBackdrop(QPixmap());
        const QImage empty = about.Canvas1->grab().toImage();
        EXPECT_EQ(empty.pixel(64, 64), empty.pixel(0, 0));
        EXPECT_NE(empty.pixel(64, 64), picture.pixel(64, 64));
        QTest::keyClick(&about, Qt::Key_Escape);
    });
}

} // namespace
