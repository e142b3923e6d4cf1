#include "cli/chartexport.h"

#include "chart/window1.h"

#include <QFont>
#include <QLabel>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>

#include <algorithm>
#include <cctype>
#include <map>

namespace varnock::chart {

namespace {

const PopupMenu *Tuning(const Window1 &w, int string) {
    const PopupMenu *popups[] = {w.PopupMenu5, w.PopupMenu6, w.PopupMenu7, w.PopupMenu8};
    return popups[string];
}

std::vector<std::string> Items(const PopupMenu &popup) {
    std::vector<std::string> items;
    for (Int i = 0; i < popup.ListCount(); ++i)
        items.push_back(popup.List(i));
    return items;
}

std::string Join(const std::vector<std::string> &parts, const std::string &sep) {
    std::string out;
    for (std::size_t i = 0; i < parts.size(); ++i)
        out += (i ? sep : "") + parts[i];
    return out;
}

std::vector<std::string> SplitList(const std::string &text) {
    std::vector<std::string> parts;
    std::string::size_type start = 0;
    for (;;) {
        const auto comma = text.find(',', start);
        std::string part = text.substr(start, comma - start);
        // Spaces around list entries are only typing comfort.
        part.erase(0, part.find_first_not_of(' '));
        part.erase(part.find_last_not_of(' ') + 1);
        parts.push_back(part);
        if (comma == std::string::npos)
            return parts;
        start = comma + 1;
    }
}

[[noreturn]] void Reject(const std::string &what, const std::string &value,
                         const std::vector<std::string> &accepted) {
    throw BadInput("unknown " + what + " \"" + value + "\"; accepted: " + Join(accepted, ", "));
}

std::string Lower(std::string s) {
    for (char &c : s)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// The names a root item answers to: "F# / Gb" answers to itself, "F#" and
// "Gb".
std::vector<std::string> NoteNames(const std::string &item) {
    std::vector<std::string> names = {item};
    std::string::size_type start = 0;
    for (;;) {
        const auto slash = item.find(" / ", start);
        names.push_back(item.substr(start, slash - start));
        if (slash == std::string::npos)
            return names;
        start = slash + 3;
    }
}

// The first letter may be typed in lower case ("f#", "gb").
std::optional<int> FindNote(const PopupMenu &roots, std::string text) {
    if (!text.empty())
        text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    for (Int i = 0; i < roots.ListCount(); ++i)
        for (const std::string &name : NoteNames(roots.List(i)))
            if (name == text)
                return static_cast<int>(i);
    return std::nullopt;
}

std::vector<std::string> Quoted(const PopupMenu &popup) {
    std::vector<std::string> quoted;
    for (const std::string &item : Items(popup))
        quoted.push_back("\"" + item + "\"");
    return quoted;
}

int ResolveItem(const PopupMenu &popup, const std::string &what, const std::string &text) {
    for (Int i = 0; i < popup.ListCount(); ++i)
        if (popup.List(i) == text)
            return static_cast<int>(i);
    // No two chord names differ only in case, so "dim7" or "Maj7" can only
    // mean one of them.
    for (Int i = 0; i < popup.ListCount(); ++i)
        if (Lower(popup.List(i)) == Lower(text))
            return static_cast<int>(i);
    Reject(what, text, Quoted(popup));
}

// Layout names are long, so any capitalisation will do; a mode number
// reaches the two layouts the program's menu does not offer as well.
int ResolveLayout(const PopupMenu &popup, const std::string &text) {
    for (Int i = 0; i < popup.ListCount(); ++i)
        if (Lower(popup.List(i)) == Lower(text))
            return static_cast<int>(i);
    if (text.size() == 1 && text[0] >= '0' && text[0] < '0' + kModes)
        return text[0] - '0';
    std::vector<std::string> accepted = Quoted(popup);
    accepted.push_back("0.." + std::to_string(kModes - 1));
    Reject("fret layout", text, accepted);
}

// The tuning popups hold sharps only; a flat is found through the root names.
int ResolveTuningNote(const Window1 &w, const std::string &text) {
    const PopupMenu &tuning = *w.PopupMenu5;
    if (const auto root = FindNote(*w.PopupMenu1, text)) {
        const std::string sharp = NoteNames(w.PopupMenu1->List(*root))[1];
        for (Int i = 0; i < tuning.ListCount(); ++i)
            if (tuning.List(i) == sharp)
                return static_cast<int>(i);
    }
    Reject("tuning note", text, Items(tuning));
}

std::string Value(const std::vector<std::string> &args, std::size_t &i) {
    if (i + 1 >= args.size())
        throw BadInput("option " + args[i] + " needs a value");
    return args[++i];
}

} // namespace

Options ParseArguments(const std::vector<std::string> &args) {
    Options o;
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string arg = args[i];
        // --name=value is the same as --name value.
        std::vector<std::string> local;
        std::size_t j = 0;
        const std::vector<std::string> *source = &args;
        std::size_t *at = &i;
        if (arg.rfind("--", 0) == 0 && arg.find('=') != std::string::npos) {
            local = {arg.substr(0, arg.find('=')), arg.substr(arg.find('=') + 1)};
            arg = local[0];
            source = &local;
            at = &j;
        }
        const auto value = [&] { return Value(*source, *at); };
        if (arg == "-h" || arg == "--help")
            o.help = true;
        else if (arg == "--version")
            o.version = true;
        else if (arg == "--frets")
            o.frets = value();
        else if (arg == "--strings")
            o.strings = value();
        else if (arg == "--tuning")
            o.tuning = value();
        else if (arg == "--root")
            o.root = value();
        else if (arg == "--chord")
            o.chord = value();
        else if (arg == "--roots")
            o.roots = value();
        else if (arg == "--chords")
            o.chords = value();
        else if (arg == "--from-settings")
            o.fromSettings = true;
        else if (arg == "--text")
            o.text = true;
        else if (arg == "--tsv")
            o.tsv = true;
        else if (arg == "-o" || arg == "--output")
            o.output = value();
        else if (arg == "--png")
            o.png = value();
        else if (arg == "--svg")
            o.svg = value();
        else if (arg == "--pdf")
            o.pdf = value();
        else if (arg == "--book")
            o.book = value();
        else if (arg == "--scale") {
            const std::string s = value();
            if (s != "1" && s != "2")
                throw BadInput("unknown scale \"" + s + "\"; accepted: 1, 2");
            o.scale = s[0] - '0';
        } else
            throw BadInput("unknown option \"" + arg + "\"; see --help");
        if (source == &local && j + 1 < local.size())
            throw BadInput("option " + arg + " takes no value");
    }
    if (o.text && o.tsv)
        throw BadInput("--text and --tsv exclude each other");
    return o;
}

std::string HelpText() {
    return R"(Usage: varnock-chart [options]

Prints or exports Varnock's chord chart: the same chord model and the same
cell painting as the program's window, without opening a window.

Selections (names as in the program's menus; defaults are its start values):
  --frets LAYOUT     "Diatonic" (default), "Diatonic with 6+",
                     "Diatonic with 1+ and 6+", "Chromatic", or the mode
                     number 0..5; 4 and 5 are two five-fret layouts the
                     program's menu does not offer
  --strings N        3 (default) or 4
  --tuning NOTES     open notes from the lowest string, comma-separated:
                     D,A,D (default) or D,A,D,G; four notes imply --strings 4
  --root NOTE        A (default) .. G#; flats too: "Gb" is "F# / Gb"
  --chord TYPE       Maj (default), 7, maj7, m, m7, Dim, Dim7, Sus2, Sus4,
                     add9, madd9, Aug, 2, 5, 6, 6/9, 9/6, 9, 11, 13, maj9,
                     maj11, maj13, m6, maj6/9, mmaj7, mmaj9, m9, m11, m13,
                     7/6, 7sus4
  --from-settings    take layout, strings and tuning from the program's
                     settings file (read only); options given still win

Output (text goes to standard output unless -o is given):
  --text             the chart as an aligned table, then "Notes: ..." (default)
  --tsv              tab-separated: heading line, label row, string rows, one
                     line each, cells exactly as in the chart; no notes line
  -o, --output FILE  write the --text or --tsv output to FILE
  --png FILE         chart and notes table as a PNG image
  --scale 1|2        pixel scale of the PNG (2 for print)
  --svg FILE         chart and notes table as SVG
  --pdf FILE         chart and notes table as a one-page PDF
  --book FILE.pdf    a chord book: a contents page, then a titled page per root
                     with the chart and notes of every chord
  --roots LIST       roots for the book, comma-separated (default: all 12)
  --chords LIST      chords for the book, comma-separated (default: all 32)
  --version          the version, the same as the program's
  -h, --help         this text

Files are written to a temporary name and renamed when complete.
Exit status: 0 success, 1 a file could not be written, 2 bad option or value.

Examples:
  varnock-chart --root D
  varnock-chart --frets Chromatic --tuning D,A,D,G --root D --chord 7 --tsv
  varnock-chart --root "F#" --chord m7 --png fsharp-m7.png --scale 2
  varnock-chart --from-settings --root Gb --chord Maj --svg chart.svg
  varnock-chart --tuning D,A,D --book dad.pdf --chords Maj,m,7
)";
}

int ResolveRoot(const Window1 &window, const std::string &text) {
    if (const auto index = FindNote(*window.PopupMenu1, text))
        return *index;
    Reject("root", text, Quoted(*window.PopupMenu1));
}

int ResolveChord(const Window1 &window, const std::string &text) {
    return ResolveItem(*window.PopupMenu2, "chord", text);
}

namespace {

// Every item of the popup when no list is given, else each name resolved.
template <typename ResolveName>
std::vector<int> ResolveList(const PopupMenu &popup, const std::optional<std::string> &list,
                             ResolveName resolve) {
    std::vector<int> out;
    if (!list || list->empty()) {
        for (Int i = 0; i < popup.ListCount(); ++i)
            out.push_back(static_cast<int>(i));
        return out;
    }
    for (const std::string &name : SplitList(*list))
        out.push_back(resolve(name));
    return out;
}

} // namespace

std::vector<int> ResolveRoots(const Window1 &window, const std::optional<std::string> &list) {
    return ResolveList(*window.PopupMenu1, list,
                       [&](const std::string &name) { return ResolveRoot(window, name); });
}

std::vector<int> ResolveChords(const Window1 &window, const std::optional<std::string> &list) {
    return ResolveList(*window.PopupMenu2, list,
                       [&](const std::string &name) { return ResolveChord(window, name); });
}

Selection Resolve(const Window1 &window, const Options &o) {
    Selection s;
    if (o.frets)
        s.frets = ResolveLayout(*window.PopupMenu9, *o.frets);
    if (o.strings) {
        if (*o.strings != "3" && *o.strings != "4")
            throw BadInput("unknown string count \"" + *o.strings + "\"; accepted: 3, 4");
        s.strings = *o.strings == "4" ? 1 : 0;
    }
    if (o.tuning) {
        const std::vector<std::string> notes = SplitList(*o.tuning);
        if (notes.size() < 3 || notes.size() > 4)
            throw BadInput("tuning \"" + *o.tuning +
                           "\" needs 3 or 4 comma-separated notes, such as D,A,D or D,A,D,G");
        for (const std::string &note : notes)
            s.tuning.push_back(ResolveTuningNote(window, note));
        if (notes.size() == 4 && !s.strings)
            s.strings = 1;
        if (notes.size() == 3 && s.strings == 1)
            throw BadInput("tuning \"" + *o.tuning + "\" names 3 strings, but --strings is 4");
    }
    if (o.root)
        s.root = ResolveRoot(window, *o.root);
    if (o.chord)
        s.chord = ResolveChord(window, *o.chord);
    return s;
}

void Apply(Window1 &w, const Selection &s) {
    if (s.frets) {
        // The window never shown here gets items for the modes its menu
        // lacks, so that the very same recompute draws them.
        while (w.PopupMenu9->ListCount() <= *s.frets)
            w.PopupMenu9->AddRow("Layout " + std::to_string(w.PopupMenu9->ListCount()));
        w.PopupMenu9->SetListIndex(*s.frets);
    }
    if (s.strings)
        w.PopupMenu10->SetListIndex(*s.strings);
    PopupMenu *tunings[] = {w.PopupMenu5, w.PopupMenu6, w.PopupMenu7, w.PopupMenu8};
    for (std::size_t i = 0; i < s.tuning.size(); ++i)
        tunings[i]->SetListIndex(s.tuning[i]);
    if (s.root)
        w.PopupMenu1->SetListIndex(*s.root);
    if (s.chord)
        w.PopupMenu2->SetListIndex(*s.chord);
}

std::vector<std::vector<std::string>> ChartRows(const Window1 &w) {
    const Listbox &list = *w.Listbox1;
    std::vector<std::vector<std::string>> rows;
    std::vector<std::string> heading;
    for (Int c = 0; c < list.ColumnCount(); ++c)
        heading.push_back(list.Heading(c));
    rows.push_back(heading);
    for (Int r = 0; r < list.ListCount(); ++r) {
        std::vector<std::string> row;
        for (Int c = 0; c < list.ColumnCount(); ++c)
            row.push_back(list.Cell(r, c));
        rows.push_back(row);
    }
    return rows;
}

std::vector<std::string> ChordNotes(const Window1 &w) {
    std::vector<std::string> notes;
    const Listbox &list = *w.Listbox2;
    for (Int r = 0; r < list.ListCount(); ++r)
        for (Int c = 0; c < list.ColumnCount(); ++c)
            if (const std::string cell = list.Cell(r, c); !cell.empty())
                notes.push_back(cell);
    return notes;
}

std::string ChartText(const Window1 &w) {
    const auto rows = ChartRows(w);
    std::vector<std::size_t> width(rows.empty() ? 0 : rows[0].size(), 0);
    for (const auto &row : rows)
        for (std::size_t c = 0; c < row.size(); ++c)
            width[c] = std::max(width[c], row[c].size());
    std::string out;
    for (const auto &row : rows) {
        std::string line;
        for (std::size_t c = 0; c < row.size(); ++c) {
            line += row[c];
            if (c + 1 < row.size())
                line += std::string(width[c] - row[c].size() + 1, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out += line + "\n";
    }
    out += "Notes: " + Join(ChordNotes(w), " ") + "\n";
    return out;
}

std::string ChartTsv(const Window1 &w) {
    std::string out;
    for (const auto &row : ChartRows(w))
        out += Join(row, "\t") + "\n";
    return out;
}

std::string ChartTitle(const Window1 &w) {
    const int strings = w.PopupMenu10->ListIndex() == 1 ? 4 : 3;
    std::vector<std::string> tuning;
    for (int i = 0; i < strings; ++i)
        tuning.push_back(Tuning(w, i)->List(Tuning(w, i)->ListIndex()));
    return w.PopupMenu1->List(w.PopupMenu1->ListIndex()) + " " +
           w.PopupMenu2->List(w.PopupMenu2->ListIndex()) + " - " +
           w.PopupMenu9->List(w.PopupMenu9->ListIndex()) + ", " + std::to_string(strings) +
           " strings " + Join(tuning, " ");
}

// ---- the sheet ----

namespace {

// Chart at the sheet's origin, the notes table and its label where the
// window has them relative to the chart.
QRect SheetRect(const Window1 &w) {
    return w.Listbox1->geometry().united(w.Listbox2->geometry()).united(w.Label4->geometry());
}

} // namespace

QSize SheetSize(const Window1 &w) {
    return SheetRect(w).size();
}

void PaintSheet(QPainter &painter, Window1 &w) {
    const QPoint origin = SheetRect(w).topLeft();
    painter.fillRect(QRect(QPoint(0, 0), SheetSize(w)), Qt::white);
    // The lists paint themselves straight onto the painter; the label has no
    // background of its own.
    painter.save();
    painter.translate(w.Label4->pos() - origin);
    w.Label4->render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    painter.restore();
    for (Listbox *list : {w.Listbox1, w.Listbox2}) {
        painter.save();
        painter.translate(list->pos() - origin);
        list->Paint(painter);
        painter.restore();
    }
}

QImage RenderSheet(Window1 &w, int scale) {
    QImage image(SheetSize(w) * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintSheet(painter, w);
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
}

// ---- writing ----

namespace {

// Sheet pixels per inch on paper: the screen's 96 dpi.
constexpr int kResolution = 96;

[[noreturn]] void Fail(const QString &path, const QString &why) {
    throw WriteFailed("cannot write " + path.toStdString() + ": " + why.toStdString());
}

void Open(QSaveFile &file) {
    if (!file.open(QIODevice::WriteOnly))
        Fail(file.fileName(), file.errorString());
}

void Commit(QSaveFile &file) {
    if (!file.commit())
        Fail(file.fileName(), file.errorString());
}

} // namespace

void WriteTextFile(const QString &path, const std::string &bytes) {
    QSaveFile file(path);
    Open(file);
    if (file.write(bytes.data(), static_cast<qint64>(bytes.size())) !=
        static_cast<qint64>(bytes.size()))
        Fail(path, file.errorString());
    Commit(file);
}

void WritePng(const QString &path, Window1 &w, int scale) {
    const QImage image = RenderSheet(w, scale);
    QSaveFile file(path);
    Open(file);
    if (!image.save(&file, "PNG"))
        Fail(path, QStringLiteral("PNG encoding failed"));
    Commit(file);
}

void WriteSvg(const QString &path, Window1 &w) {
    QSaveFile file(path);
    Open(file);
    {
        QSvgGenerator svg;
        svg.setOutputDevice(&file);
        svg.setSize(SheetSize(w));
        svg.setViewBox(QRect(QPoint(0, 0), SheetSize(w)));
        // The screen's 96 dpi, so the sizes on paper and the fonts match the PDF.
        svg.setResolution(kResolution);
        svg.setTitle(QString::fromStdString(ChartTitle(w)));
        QPainter painter;
        if (!painter.begin(&svg))
            Fail(path, QStringLiteral("SVG generator failed"));
        PaintSheet(painter, w);
    }
    Commit(file);
}

namespace {

void SetupPdf(QPdfWriter &pdf, const QString &title) {
    pdf.setTitle(title);
    pdf.setCreator(QStringLiteral("varnock-chart"));
    pdf.setResolution(kResolution);
}

} // namespace

void WritePdf(const QString &path, Window1 &w) {
    QSaveFile file(path);
    Open(file);
    {
        QPdfWriter pdf(&file);
        SetupPdf(pdf, QString::fromStdString(ChartTitle(w)));
        // A page just the size of the sheet with a small margin.
        const QSize sheet = SheetSize(w);
        const int margin = 16;
        pdf.setPageSize(QPageSize(QSizeF((sheet.width() + 2 * margin) * 72.0 / kResolution,
                                         (sheet.height() + 2 * margin) * 72.0 / kResolution),
                                  QPageSize::Point));
        pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
        QPainter painter;
        if (!painter.begin(&pdf))
            Fail(path, QStringLiteral("PDF writer failed"));
        painter.translate(margin, margin);
        PaintSheet(painter, w);
    }
    Commit(file);
}

int WriteBook(const QString &path, Window1 &w, const std::vector<int> &roots,
              const std::vector<int> &chords) {
    QSaveFile file(path);
    Open(file);
    int pages = 0;
    {
        QPdfWriter pdf(&file);
        SetupPdf(pdf, QStringLiteral("Varnock chord book"));
        pdf.setPageSize(QPageSize(QPageSize::A4));
        pdf.setPageMargins(QMarginsF(12, 12, 12, 12), QPageLayout::Millimeter);
        QPainter painter;
        if (!painter.begin(&pdf))
            Fail(path, QStringLiteral("PDF writer failed"));
        const QRect page = painter.viewport();
        const QSize sheet = SheetSize(w);
        const int perRoot = static_cast<int>((chords.size() + kChartsPerPage - 1) / kChartsPerPage);

        QFont titleFont(QStringLiteral("DejaVu Sans"));
        titleFont.setPixelSize(22);
        titleFont.setBold(true);
        QFont lineFont(QStringLiteral("DejaVu Sans"));
        lineFont.setPixelSize(13);

        // Contents: the instrument, then each root with its first page.
        const std::string instrument = [&] {
            const std::string t = ChartTitle(w);
            return t.substr(t.find(" - ") + 3);
        }();
        painter.setPen(Qt::black);
        painter.setFont(titleFont);
        painter.drawText(QPoint(0, 30), QStringLiteral("Chord book"));
        painter.setFont(lineFont);
        painter.drawText(QPoint(0, 56), QString::fromStdString(instrument));
        int y = 96;
        for (std::size_t i = 0; i < roots.size(); ++i, y += 22) {
            const QString root = QString::fromStdString(w.PopupMenu1->List(roots[i]));
            painter.drawText(QPoint(0, y), root);
            painter.drawText(QRect(0, y - 16, page.width(), 22), Qt::AlignRight,
                             QString::number(2 + static_cast<int>(i) * perRoot));
        }
        // Every page but the contents carries its number, as the contents
        // promise.
        const auto footer = [&](int number) {
            painter.setFont(lineFont);
            painter.drawText(QRect(0, page.height() - 22, page.width(), 22),
                             Qt::AlignHCenter | Qt::AlignBottom, QString::number(number));
        };
        pages = 1;

        const double fit = std::min(1.0, static_cast<double>(page.width()) / sheet.width());
        for (const int root : roots) {
            w.PopupMenu1->SetListIndex(root);
            for (int p = 0; p < perRoot; ++p) {
                pdf.newPage();
                footer(++pages);
                const QString rootName = QString::fromStdString(w.PopupMenu1->List(root));
                painter.setFont(titleFont);
                painter.drawText(QPoint(0, 30),
                                 p == 0 ? rootName : rootName + QStringLiteral(" (continued)"));
                int top = 56;
                for (int k = 0; k < kChartsPerPage; ++k) {
                    const std::size_t index = static_cast<std::size_t>(p * kChartsPerPage + k);
                    if (index >= chords.size())
                        break;
                    w.PopupMenu2->SetListIndex(chords[index]);
                    painter.setFont(lineFont);
                    painter.drawText(
                        QPoint(0, top + 14),
                        QString::fromStdString(ChartTitle(w).substr(0, ChartTitle(w).find(" - "))));
                    painter.save();
                    painter.translate(0, top + 22);
                    painter.scale(fit, fit);
                    PaintSheet(painter, w);
                    painter.restore();
                    top += 22 + static_cast<int>(sheet.height() * fit) + 24;
                }
            }
        }
    }
    Commit(file);
    return pages;
}

} // namespace varnock::chart
