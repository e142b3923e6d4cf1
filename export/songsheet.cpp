#include "export/songsheet.h"

#include "export/diagram.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cctype>
#include <functional>

namespace varnock::output {

namespace {

// Diagrams are drawn smaller than --voicings draws them alone, so that a
// song's chords fit in a row or two above the words.
constexpr double kDiagramScale = 0.75;
constexpr double kDiagramGap = 10;
constexpr double kChorusIndent = 22;

QFont Font(int pixels, bool bold = false, bool italic = false) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    font.setBold(bold);
    font.setItalic(italic);
    return font;
}

QString Q(const std::string &text) {
    return QString::fromStdString(text);
}

// Something drawn across the page at a height, moved to the next page whole.
struct Block {
    double height = 0;
    bool keepWithNext = false; // a heading stays with what it heads, a line with its verse
    std::function<void(QPainter &, double)> paint;
    bool newPage = false; // the song asks for a new page here ({new_page})
};

// {new_page}, {np} and their physical kin, which a sheet of ours obeys.
bool NewPage(const SongLine &line) {
    if (line.kind != SongLine::Kind::Kept || !line.text.starts_with("{"))
        return false;
    std::string name;
    for (const char c : line.text.substr(1)) {
        if (c == ':' || c == '}' || c == ' ')
            break;
        name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return name == "new_page" || name == "np" || name == "new_physical_page" || name == "npp";
}

// The song's fingered chords, each a diagram under its name.
std::vector<Diagrams> SongDiagrams(const std::vector<SongChord> &chords, const SongBoard &board) {
    std::vector<Diagrams> out;
    for (const SongChord &chord : chords) {
        if (!chord.shape.fingering)
            continue;
        Diagrams d;
        d.title = chord.symbol.written;
        d.fretNames = board.fretNames;
        d.capo = board.capo;
        d.leftHanded = board.leftHanded;
        d.fingerings = {*chord.shape.fingering};
        d.voicings = {chord.voicing};
        out.push_back(std::move(d));
    }
    return out;
}

// Where a diagram draws: a set of them keeps room for a wide title, which
// a song's row of single diagrams does without.
QRect InkBox(const Diagrams &d) {
    QImage image(DiagramsSize(d), QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        PaintDiagrams(painter, d);
    }
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            if (line[x] != qRgb(255, 255, 255))
                box |= QRect(x, y, 1, 1);
    }
    return box.adjusted(-2, -2, 2, 2);
}

class Sheet {
  public:
    Sheet(const Song &song, const std::vector<SongChord> &chords, const SongBoard &board,
          double width)
        : song_(song), sung_(SungLines(song)), chords_(chords), board_(board), width_(width) {}

    std::vector<Block> Blocks() {
        Head();
        DiagramRows();
        for (std::size_t i = 0; i < sung_.size(); ++i)
            Line(sung_[i], i + 1 < sung_.size() ? &sung_[i + 1] : nullptr);
        return std::move(blocks_);
    }

  private:
    const Song &song_;
    // The lines as sung; the blocks drawn later refer to them.
    const std::vector<SongLine> sung_;
    const std::vector<SongChord> &chords_;
    const SongBoard &board_;
    double width_;
    std::vector<Block> blocks_;

    void Text(const QFont &font, const std::string &text, QColor colour = Qt::black,
              double before = 0, double indent = 0, bool keep = false) {
        const double height = QFontMetricsF(font).height() * 1.25 + before;
        blocks_.push_back({height, keep, [=, this](QPainter &p, double y) {
                               p.setFont(font);
                               p.setPen(colour);
                               p.drawText(
                                   QRectF(indent, y + before, width_ - indent, height - before),
                                   Qt::AlignLeft | Qt::AlignVCenter, Q(text));
                           }});
    }

    void Head() {
        Text(Font(24, true), song_.title.empty() ? "Untitled song" : song_.title);
        std::vector<std::string> under = song_.subtitles;
        if (!song_.artist.empty())
            under.insert(under.begin(), song_.artist);
        for (const std::string &line : under)
            Text(Font(14), line);
        Text(Font(12),
             (song_.key.empty() ? "" : "Key " + song_.key + " \u2022 ") + board_.Describe(),
             QColor(0x44, 0x44, 0x44), 0, 0, true);
    }

    void DiagramRows() {
        struct Drawn {
            output::Diagrams diagrams;
            QRect box;
        };
        auto drawn = std::make_shared<std::vector<Drawn>>();
        for (output::Diagrams &d : SongDiagrams(chords_, board_)) {
            const QRect box = InkBox(d);
            drawn->push_back({std::move(d), box});
        }
        // Rows of diagrams, as many across as fit.
        std::vector<std::vector<std::size_t>> rows(1);
        double x = 0;
        for (std::size_t i = 0; i < drawn->size(); ++i) {
            const double w = (*drawn)[i].box.width() * kDiagramScale;
            if (x > 0 && x + w > width_) {
                rows.emplace_back();
                x = 0;
            }
            rows.back().push_back(i);
            x += w + kDiagramGap;
        }
        for (const auto &row : rows) {
            double height = 0;
            for (std::size_t i : row)
                height = std::max(height, (*drawn)[i].box.height() * kDiagramScale);
            blocks_.push_back({height + kDiagramGap, false, [=](QPainter &p, double y) {
                                   double left = 0;
                                   for (std::size_t i : row) {
                                       const Drawn &one = (*drawn)[i];
                                       p.save();
                                       p.translate(left, y + kDiagramGap);
                                       p.scale(kDiagramScale, kDiagramScale);
                                       p.translate(-one.box.topLeft());
                                       PaintDiagrams(p, one.diagrams);
                                       p.restore();
                                       left += one.box.width() * kDiagramScale + kDiagramGap;
                                   }
                               }});
        }
        for (const SongChord &chord : chords_)
            if (!chord.shape.fingering)
                Text(Font(11, false, true), chord.symbol.written + ": " + chord.note,
                     QColor(0x66, 0x22, 0x22));
        Text(Font(8), "");
    }

    void Line(const SongLine &line, const SongLine *next) {
        const bool chorus = line.section == "chorus";
        const double indent = chorus ? kChorusIndent : 0;
        // A verse stays on one page, with the comment that heads it.
        const bool verse =
            next &&
            (next->kind == SongLine::Kind::Lyrics ||
             (line.kind == SongLine::Kind::Comment && next->kind == SongLine::Kind::SectionStart));
        switch (line.kind) {
        case SongLine::Kind::Blank:
            Text(Font(7), "");
            break;
        case SongLine::Kind::Comment:
            Text(Font(12, false, true), line.text, QColor(0x55, 0x55, 0x55), 0, indent, verse);
            break;
        case SongLine::Kind::SectionStart:
            Text(Font(13, true), SectionHeading(line), Qt::black, 10, indent, true);
            break;
        case SongLine::Kind::SectionEnd:
            break;
        case SongLine::Kind::Kept:
            if (NewPage(line))
                blocks_.push_back({0, false, [](QPainter &, double) {}, true});
            break;
        case SongLine::Kind::ChorusRecall:
            Text(Font(13, true, true), line.text.empty() ? "Chorus" : line.text, Qt::black, 10,
                 kChorusIndent);
            break;
        case SongLine::Kind::Tab: {
            QFont mono(QStringLiteral("DejaVu Sans Mono"));
            mono.setPixelSize(12);
            Text(mono, line.text, Qt::black, 0, indent);
            break;
        }
        case SongLine::Kind::Lyrics:
            Lyrics(line, indent, chorus, verse);
            break;
        }
    }

    // A lyric line with its chords over it: each name starts above the
    // first letter of its syllable, pushed right where the one before needs
    // the room. Names none of the 32 types match are grey and italic.
    void Lyrics(const SongLine &line, double indent, bool bar, bool keep) {
        const QFont words = Font(14), names = Font(13, true);
        const QFontMetricsF wm(words), nm(names);
        // Copies: the blocks are drawn after the lines they came from are gone.
        std::vector<std::pair<double, PlacedChord>> placed;
        // The words in pieces, each where it starts: where a name needs more
        // room than the words under it give, the words after it make way.
        std::vector<std::pair<double, std::string>> pieces;
        double start = 0, end = 0;
        std::size_t from = 0;
        for (const PlacedChord &chord : line.chords) {
            const std::string before = line.text.substr(from, chord.at - from);
            const double at = start + wm.horizontalAdvance(Q(before));
            const double x = placed.empty() ? at : std::max(at, end + nm.horizontalAdvance(' '));
            if (x > at) {
                pieces.emplace_back(start, before);
                start = x;
                from = chord.at;
            }
            placed.emplace_back(x, chord);
            end = x + nm.horizontalAdvance(Q(chord.name));
        }
        pieces.emplace_back(start, line.text.substr(from));
        std::vector<std::string> known;
        for (const SongChord &c : chords_)
            if (!c.tones.empty())
                known.push_back(c.symbol.written);
        const double chordHeight = placed.empty() ? 0 : nm.height() * 1.1;
        // Chords alone take no line of words under them.
        const bool sung = line.text.find_first_not_of(' ') != std::string::npos || placed.empty();
        const double height = chordHeight + (sung ? wm.height() * 1.25 : nm.height() * 0.3);
        blocks_.push_back(
            {height, keep, [=, this](QPainter &p, double y) {
                 for (const auto &[x, chord] : placed) {
                     const bool isKnown = chord.annotation || std::find(known.begin(), known.end(),
                                                                        chord.name) != known.end();
                     QFont font = names;
                     font.setItalic(!isKnown || chord.annotation);
                     p.setFont(font);
                     p.setPen(isKnown ? QColor(0x1A, 0x3C, 0x8C) : QColor(0x77, 0x77, 0x77));
                     p.drawText(QPointF(indent + x, y + nm.ascent()), Q(chord.name));
                 }
                 p.setFont(words);
                 p.setPen(Qt::black);
                 for (const auto &[x, piece] : pieces)
                     p.drawText(QPointF(indent + x, y + chordHeight + wm.ascent()), Q(piece));
                 if (bar)
                     p.fillRect(QRectF(4, y, 3, height), QColor(0xBB, 0xBB, 0xBB));
             }});
    }
};

} // namespace

int WriteSongSheet(const FileName &path, const Song &song, const std::vector<SongChord> &chords,
                   const SongBoard &board, Paper paper) {
    const std::string title = song.title.empty() ? "Untitled song" : song.title;
    OutputFile file(path);
    OpenForWriting(file);
    int pages = 1;
    {
        QPdfWriter pdf(&file);
        QPainter painter;
        BeginPdf(pdf, painter, path, title, paper, QPageLayout::Portrait);
        const QRect page = pdf.pageLayout().paintRectPixels(pdf.resolution());
        // The blocks draw with the sheet's width and lines: it lives while they are drawn.
        Sheet sheet(song, chords, board, page.width());
        const std::vector<Block> blocks = sheet.Blocks();
        const QFont continued = Font(11, false, true);
        double y = 0;
        double top = 0; // where the page's first block starts
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            double need = blocks[i].height;
            for (std::size_t k = i; blocks[k].keepWithNext && k + 1 < blocks.size(); ++k)
                need += blocks[k + 1].height;
            // What no page holds whole breaks where it must.
            if (need > page.height() - top)
                need = blocks[i].height;
            if (blocks[i].newPage ? y > top : y > 0 && y + need > page.height()) {
                pdf.newPage();
                ++pages;
                painter.setFont(continued);
                painter.setPen(QColor(0x55, 0x55, 0x55));
                const double h = QFontMetricsF(continued).height() * 1.6;
                painter.drawText(QRectF(0, 0, page.width(), h), Qt::AlignLeft | Qt::AlignTop,
                                 Q(title + " (continued)"));
                y = top = h;
            }
            blocks[i].paint(painter, y);
            y += blocks[i].height;
        }
    }
    Commit(file);
    return pages;
}

} // namespace varnock::output
