// Each option that changes how a file looks reaches that file: the same
// command is run without and with it, and what a reader of the file sees
// (the image, the page as poppler draws it, the text) must change as the
// option says.

#include "support.h"

#include <QImage>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

using testsupport::ReadBytes;
using testsupport::RunChart;
using testsupport::TempDir;
using testsupport::WriteBytes;

// What a reader of `file` sees: a PNG's size and pixels, a PDF's pages
// drawn by poppler and its text, any other file's bytes.
struct Seen {
    QSize size;
    std::string what;
};

std::string Run(const char *program, const QStringList &args) {
    QProcess run;
    run.start(QString::fromLatin1(program), args);
    EXPECT_TRUE(run.waitForFinished(60000)) << program << " (poppler-utils) is needed";
    return run.readAllStandardOutput().toStdString();
}

Seen Read(const std::string &file) {
    const QString path = QString::fromStdString(file);
    if (file.ends_with(".png")) {
        const QImage image(path);
        return {image.size(), std::string(reinterpret_cast<const char *>(image.constBits()),
                                          static_cast<std::size_t>(image.sizeInBytes()))};
    }
    if (file.ends_with(".pdf"))
        return {{},
                Run("pdftotext", {QStringLiteral("-layout"), path, QStringLiteral("-")}) +
                    Run("pdftoppm", {QStringLiteral("-r"), QStringLiteral("30"),
                                     QStringLiteral("-png"), path})};
    return {{}, ReadBytes(file)};
}

TEST(ChartOptionsReach, EveryLookOptionChangesTheFileItIsFor) {
    TempDir dir;
    const std::string song = (dir.Path() / "song.cho").string();
    WriteBytes(song, "{title: Reach}\n{key: D}\n[D]one [G]two [A]three [D]four\n");
    const struct {
        QStringList args;   // the file given last, or "-" for standard output
        QStringList option; // what is added
        const char *shows;  // what the reader then sees, or "" when it only differs
        double scaled;      // how much wider an image gets, or 0
    } cases[] = {
        {{"--root", "D", "--png"}, {"--pixel-scale", "2"}, "", 2},
        {{"--root", "D", "--voicings", "--count", "2", "--png"}, {"--pixel-scale", "3"}, "", 3},
        {{"--root", "D", "--window-image"}, {"--pixel-scale", "2"}, "", 2},
        {{"--root", "D", "--svg"}, {"--palette", "colour-blind"}, "", 0},
        {{"--root", "D", "--png"}, {"--palette", "colour-blind"}, "", 0},
        {{"--chords", "Maj", "--roots", "D", "--book"}, {"--palette", "colour-blind"}, "", 0},
        {{"--chords", "Maj", "--roots", "D", "--book"}, {"--names", "german"}, "Fis", 0},
        {{"--chords", "Maj,7", "--roots", "D", "--voicings", "--book"}, {"--count", "1"}, "", 0},
        {{"--root", "D", "--describe", "-"}, {"--flip"}, "", 0},
        // Typed flats come back as flats.
        {{"--tuning", "Bb,F,Bb", "--modes", "-"}, {"--root", "F"}, "tuned Bb F Bb", 0},
        {{"--song", QString::fromStdString(song), "--pdf"}, {"--left-handed"}, "", 0},
        {{"--song", QString::fromStdString(song), "--suggest", "-"},
         {"--reach", "4"},
         "reach 4",
         0},
    };
    for (const auto &c : cases) {
        const std::string context = (c.args + c.option).join(' ').toStdString();
        std::vector<Seen> seen;
        for (const bool with : {false, true}) {
            QStringList args = c.args;
            std::string file;
            if (args.last() != QStringLiteral("-")) {
                const std::string kind = args.last() == QStringLiteral("--svg") ? ".svg"
                                         : args.last() == QStringLiteral("--png") ||
                                                 args.last() == QStringLiteral("--window-image")
                                             ? ".png"
                                             : ".pdf";
                file = (dir.Path() / ((with ? "with" : "without") + kind)).string();
                args << QString::fromStdString(file);
            } else {
                args.removeLast();
            }
            if (with)
                args << c.option;
            const auto run = RunChart(args);
            ASSERT_EQ(run.status, 0) << context << ": " << run.err;
            seen.push_back(file.empty() ? Seen{{}, run.out} : Read(file));
        }
        EXPECT_NE(seen[0].what, seen[1].what) << context << ": the option changed nothing";
        if (*c.shows) {
            EXPECT_NE(seen[1].what.find(c.shows), std::string::npos) << context;
        }
        if (c.scaled > 0) {
            EXPECT_EQ(seen[1].size.width(), seen[0].size.width() * c.scaled) << context;
        }
    }
}

} // namespace
