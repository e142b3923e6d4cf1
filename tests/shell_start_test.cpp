// Start and quit: the order in process, and the real program run as a
// separate process on the offscreen platform, stopped, and its file read.

#include "shell/menubar1.h"
#include "support.h"

#include <QApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTimer>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <thread>

using namespace varnock;
using namespace testsupport;

TEST(Start, StoreBeforeWindowAndACompleteFirstChartWithNoMessage) {
    ScratchHome home;
    Messages messages;
    QuitCounter quits;
    myINI.reset();
    TheApp().Event_Open();
    ASSERT_TRUE(myINI); // the store exists before the window
    EXPECT_TRUE(std::filesystem::is_directory(home.DataFolder()));
    EXPECT_FALSE(std::filesystem::exists(home.IniFile()));
    EXPECT_TRUE(TheApp().AutoQuit);
    {
        Window1 w;
        EXPECT_EQ(w.Listbox1->ListCount(), 0); // nothing computed before the opening
        w.Open();
        EXPECT_EQ(w.Listbox1->ListCount(), 4);
        EXPECT_EQ(w.Listbox2->Cell(0, 0), "A");
        // No File menu on the bar; Quit and About stay reachable.
        auto *bar = static_cast<MenuBar1 *>(w.menuBar());
        EXPECT_FALSE(bar->FileMenu->menuAction()->isVisible());
        EXPECT_TRUE(bar->mnuHelpMenu->actions().contains(bar->FileQuit));
        // The quit command goes through the window's close handling.
        w.show();
        bar->FileQuit->trigger();
        EXPECT_EQ(quits.count, 1);
    }
    EXPECT_TRUE(std::filesystem::exists(home.IniFile()));
    EXPECT_TRUE(messages.texts.empty());
    myINI.reset();
}

TEST(Start, AboutChangesNothingAndWritesNothing) {
    OpenWindow w;
    w->PopupMenu1->SetListIndex(3);
    for (int i = 0; i < 3; ++i) {
        QTimer::singleShot(0, [] {
            if (QWidget *modal = QApplication::activeModalWidget())
                modal->close();
        });
        EXPECT_TRUE(w->_mnuAbout_Action());
    }
    EXPECT_EQ(w->Listbox2->Cell(0, 0), "C");
    EXPECT_FALSE(std::filesystem::exists(w.home.IniFile()));
    EXPECT_EQ(w.quits.count, 0);
}

namespace {

// Runs the built program with a scratch home, lets it come up, asks it to stop
// as a desktop session does, and gives back its exit code.
int RunProgramAndStop(const ScratchHome &home) {
    QProcess program;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("HOME", QString::fromStdString(home.Root().string()));
    env.insert("XDG_DATA_HOME", QString::fromStdString((home.Root() / "data").string()));
    env.insert("XDG_CONFIG_HOME", QString::fromStdString((home.Root() / "config").string()));
    program.setProcessEnvironment(env);
    program.start(QStringLiteral(VARNOCK_BINARY_DIR "/bin/varnock"), {});
    if (!program.waitForStarted(10000))
        return -100;
    // The settings folder appears during start-up, after the signal handlers
    // are in place; callers start with no settings folder.
    for (int i = 0; i < 400 && !std::filesystem::exists(home.DataFolder()); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
    program.terminate();
    if (!program.waitForFinished(30000)) {
        program.kill();
        program.waitForFinished();
        return -101;
    }
    if (program.exitStatus() != QProcess::NormalExit) {
        std::fprintf(stderr, "program ended abnormally: %s\n",
                     program.readAllStandardError().constData());
        return -102;
    }
    return program.exitCode();
}

} // namespace

TEST(Program, RealBinarySavesOnTheWayDownAndRestoresNextTime) {
    ScratchHome home;
    ASSERT_EQ(RunProgramAndStop(home), 0);
    EXPECT_EQ(ReadBytes(home.IniFile()),
              "[Settings]\rFrets=0\rStrings=0\r[Strings]\rOne=0\rTwo=7\rThree=0\rFour=0\r");

    // A saved choice is what the next run starts with, and writes back unchanged.
    const std::string edited =
        "[Settings]\rFrets=3\rStrings=1\r[Strings]\rOne=4\rTwo=7\rThree=2\rFour=9\r";
    // Through the older place, so the run starts with no settings folder and
    // its appearance tells that the program is up.
    std::filesystem::remove_all(home.DataFolder());
    WriteBytes(home.OldFolder() / "Varnock.ini", edited);
    ASSERT_EQ(RunProgramAndStop(home), 0);
    EXPECT_EQ(ReadBytes(home.IniFile()), edited);
}

TEST(Program, FirstStartCopiesTheOlderFolder) {
    ScratchHome home;
    const std::string old =
        "[Settings]\rFrets=2\rStrings=0\r[Strings]\rOne=0\rTwo=7\rThree=0\rFour=0\r";
    WriteBytes(home.OldFolder() / "Varnock.ini", old);
    ASSERT_EQ(RunProgramAndStop(home), 0);
    EXPECT_EQ(ReadBytes(home.IniFile()), old);
    EXPECT_EQ(ReadBytes(home.OldFolder() / "Varnock.ini"), old);
}
