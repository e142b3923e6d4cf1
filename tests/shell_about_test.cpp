// The About box, driven as a user would: opened modally, closed by keys.

#include "shell/frmabout.h"
#include "shell/picture.h"
#include "version.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
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

QRect Geometry(int x, int y, int w, int h) {
    return QRect(x, y, w, h);
}

TEST(AboutBox, IsAFixedModalDialogWithTitleAndCloseButtonOnly) {
    frmAbout about;
    EXPECT_EQ(about.windowTitle(), QStringLiteral("About Varnock"));
    EXPECT_EQ(about.size(), QSize(600, 177));
    EXPECT_EQ(about.minimumSize(), QSize(600, 177));
    EXPECT_EQ(about.maximumSize(), QSize(600, 177));
    EXPECT_TRUE(about.isModal());

    const Qt::WindowFlags flags = about.windowFlags();
    EXPECT_TRUE(flags.testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(flags.testFlag(Qt::WindowMaximizeButtonHint));
    EXPECT_FALSE(flags.testFlag(Qt::WindowMinimizeButtonHint));
    EXPECT_FALSE(flags.testFlag(Qt::WindowFullscreenButtonHint));

    about.show();
    about.resize(900, 400);
    EXPECT_EQ(about.size(), QSize(600, 177)) << "the dialog must not be resizable";
}

TEST(AboutBox, ControlsStandWhereTheyBelongWithTheirText) {
    frmAbout about;
    const QString family = QApplication::font().family();

    ASSERT_NE(about.Label1, nullptr);
    EXPECT_EQ(about.Label1->objectName(), QStringLiteral("Label1"));
    EXPECT_EQ(about.Label1->geometry(), Geometry(160, 14, 420, 59));
    EXPECT_EQ(about.Label1->text(), QStringLiteral("Varnock"));
    EXPECT_EQ(about.Label1->font().pointSize(), 36);
    EXPECT_TRUE(about.Label1->font().bold());
    EXPECT_EQ(about.Label1->font().family(), family);
    EXPECT_EQ(about.Label1->alignment(), Qt::AlignCenter);

    ASSERT_NE(about.Label2, nullptr);
    EXPECT_EQ(about.Label2->objectName(), QStringLiteral("Label2"));
    EXPECT_EQ(about.Label2->geometry(), Geometry(160, 85, 420, 19));
    EXPECT_EQ(about.Label2->text(), QStringLiteral("version")) << "replaced only at opening";
    EXPECT_EQ(about.Label2->font().pointSize(), 12);
    EXPECT_TRUE(about.Label2->font().bold());
    EXPECT_EQ(about.Label2->alignment(), Qt::AlignCenter);

    ASSERT_NE(about.PushButton1, nullptr);
    EXPECT_EQ(about.PushButton1->objectName(), QStringLiteral("PushButton1"));
    EXPECT_EQ(about.PushButton1->geometry(), Geometry(330, 122, 80, 22));
    EXPECT_EQ(about.PushButton1->text(), QStringLiteral("&Close"));

    ASSERT_NE(about.Canvas1, nullptr);
    EXPECT_EQ(about.Canvas1->objectName(), QStringLiteral("Canvas1"));
    EXPECT_EQ(about.Canvas1->geometry(), Geometry(20, 14, 128, 128));
    EXPECT_EQ(about.Canvas1->focusPolicy(), Qt::NoFocus);

    ASSERT_NE(about.Label3, nullptr);
    EXPECT_EQ(about.Label3->objectName(), QStringLiteral("Label3"));
    EXPECT_EQ(about.Label3->geometry(), Geometry(160, 154, 420, 20));
    EXPECT_FALSE(about.Label3->text().isEmpty());
    EXPECT_EQ(about.Label3->font().pointSize(), 12);
    EXPECT_FALSE(about.Label3->font().bold());
    EXPECT_EQ(about.Label3->alignment(), Qt::AlignCenter);

    // The button and the labels share one centre line.
    EXPECT_EQ(about.PushButton1->geometry().center().x(), about.Label1->geometry().center().x());
}

TEST(AboutBox, TabOrderFollowsCreation) {
    frmAbout about;
    const QWidget *expected[] = {about.Label1, about.Label2, about.PushButton1, about.Canvas1,
                                 about.Label3};
    for (int i = 0; i + 1 < 5; ++i) {
        EXPECT_EQ(expected[i]->nextInFocusChain(), expected[i + 1]) << "after control " << i;
    }
    // Only the button takes the focus.
    EXPECT_EQ(about.Label1->focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(about.Label3->focusPolicy(), Qt::NoFocus);
    EXPECT_NE(about.PushButton1->focusPolicy(), Qt::NoFocus);
}

TEST(AboutBox, OpeningShowsTheShortVersion) {
    frmAbout about;
    about.show();
    const QString expected = QStringLiteral("v") + QString::fromUtf8(varnock::kShortVersion);
    EXPECT_EQ(about.Label2->text(), expected);
    EXPECT_FALSE(about.Label2->text().contains(QLatin1Char(' ')));
    EXPECT_TRUE(about.Label2->text().at(1).isDigit());

    // Each opening sets it again.
    about.Label2->setText(QStringLiteral("version"));
    about.hide();
    about.show();
    EXPECT_EQ(about.Label2->text(), expected);
}

TEST(AboutBox, CloseButtonIsDefaultAndCancel) {
    frmAbout about;
    EXPECT_TRUE(about.PushButton1->isDefault());
    EXPECT_TRUE(about.PushButton1->autoDefault());

    about.show();
    QSignalSpy clicks(about.PushButton1, &QPushButton::clicked);
    QTest::keyClick(&about, Qt::Key_Escape);
    EXPECT_EQ(clicks.count(), 1) << "Escape acts as a click on the button";
    EXPECT_FALSE(about.isVisible());

    about.show();
    QTest::keyClick(&about, Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 2) << "Return acts as a click on the button";
    EXPECT_FALSE(about.isVisible());
}

TEST(AboutBox, ReturnClosesTheModalDialog) {
    QMainWindow main;
    main.show();
    WithModalAbout(&main, [](frmAbout &about) { QTest::keyClick(&about, Qt::Key_Return); });
}

TEST(AboutBox, EscapeClosesTheModalDialog) {
    QMainWindow main;
    main.show();
    WithModalAbout(&main, [](frmAbout &about) { QTest::keyClick(&about, Qt::Key_Escape); });
}

TEST(AboutBox, TheButtonAndTheWindowCloseButtonCloseIt) {
    QMainWindow main;
    main.show();
    WithModalAbout(&main, [](frmAbout &about) { about.PushButton1->click(); });
    // What the window's close button sends.
    WithModalAbout(&main, [](frmAbout &about) { about.close(); });
    EXPECT_TRUE(main.isVisible()) << "closing the About box ends nothing";
}

TEST(AboutBox, ModalDialogBlocksTheMainWindowAndHasTheVersion) {
    QMainWindow main;
    main.show();
    WithModalAbout(&main, [&main](frmAbout &about) {
        EXPECT_EQ(about.parentWidget(), &main);
        EXPECT_TRUE(about.isVisible());
        EXPECT_EQ(about.Label2->text(),
                  QStringLiteral("v") + QString::fromUtf8(varnock::kShortVersion));
        EXPECT_TRUE(QApplication::activeModalWidget() == &about);
        about.PushButton1->click();
    });
}

TEST(AboutBox, OpeningAndClosingRepeatedlyLeavesNothingBehind) {
    QMainWindow main;
    main.show();
    const QString title = main.windowTitle();
    for (int i = 0; i < 5; ++i) {
        QPointer<frmAbout> seen;
        WithModalAbout(&main, [&seen, i](frmAbout &about) {
            EXPECT_EQ(about.Label2->text().left(1), QStringLiteral("v"));
            seen = &about;
            QTest::keyClick(&about, i % 2 == 0 ? Qt::Key_Escape : Qt::Key_Return);
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

TEST(AboutPicture, IsFoundBesideTheBinaryAndLoadedOnce) {
    const QString path = varnock::ResourcePath(QStringLiteral("VarnockFrets128b.bmp"));
    ASSERT_FALSE(path.isEmpty());
    EXPECT_TRUE(
        QDir::cleanPath(path).startsWith(QDir::cleanPath(QStringLiteral(VARNOCK_BINARY_DIR))))
        << path.toStdString() << " must come from the build tree, not the sources";

    const QPixmap &first = VarnockFrets128b();
    const QPixmap &second = VarnockFrets128b();
    EXPECT_EQ(&first, &second);
    ASSERT_FALSE(first.isNull());
    EXPECT_EQ(first.size(), QSize(128, 128));
}

TEST(AboutPicture, AMissingFileGivesANullPicture) {
    EXPECT_TRUE(varnock::ResourcePath(QStringLiteral("NoSuchPicture.bmp")).isEmpty());
    EXPECT_TRUE(varnock::LoadPicture(QStringLiteral("NoSuchPicture.bmp")).isNull());
}

TEST(AboutPicture, TheCanvasShowsThePicture) {
    const QImage picture = VarnockFrets128b().toImage();
    ASSERT_FALSE(picture.isNull());

    frmAbout about;
    about.show();
    const QImage shown = about.Canvas1->grab().toImage();
    ASSERT_EQ(shown.size(), QSize(128, 128));
    for (const QPoint p : {QPoint(0, 0), QPoint(64, 64), QPoint(127, 127), QPoint(30, 100),
                           QPoint(100, 30), QPoint(127, 0)}) {
        EXPECT_EQ(shown.pixel(p), picture.pixel(p)) << "at " << p.x() << "," << p.y();
    }
}

TEST(AboutPicture, WithoutAPictureTheCanvasIsEmptyAndTheDialogWorks) {
    const QImage picture = VarnockFrets128b().toImage();

    QMainWindow main;
    main.show();
    WithModalAbout(&main, [&picture](frmAbout &about) {
        about.Canvas1->SetBackdrop(QPixmap());
        const QImage shown = about.Canvas1->grab().toImage();
        const QRgb blank = shown.pixel(0, 0);
        bool uniform = true;
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                uniform = uniform && shown.pixel(x, y) == blank;
            }
        }
        EXPECT_TRUE(uniform);
        EXPECT_NE(blank, picture.pixel(64, 64));
        QTest::keyClick(&about, Qt::Key_Escape);
    });
}

} // namespace
