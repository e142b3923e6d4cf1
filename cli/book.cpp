#include "cli/book.h"

#include "chart/controller.h"
#include "chart/controls.h"
#include "chart/sheet.h"
#include "cli/chartdoc.h"
#include "cli/spelling.h"
#include "cli/writers.h"
#include "model/catalogue.h"

#include <QFont>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <algorithm>

namespace varnock::cli {

namespace {

class BookWriter {
  public:
    BookWriter(QPdfWriter &pdf, QPainter &painter, const Book &book)
        : pdf_(pdf), painter_(painter), book_(book), page_(painter.viewport()) {
        titleFont_.setPixelSize(22);
        titleFont_.setBold(true);
        lineFont_.setPixelSize(13);
    }

    // The instrument, then each root with the number of its first page.
    void Contents(int pagesPerRoot) {
        painter_.setPen(Qt::black);
        painter_.setFont(titleFont_);
        painter_.drawText(QPoint(0, 30), QStringLiteral("Chord book"));
        painter_.setFont(lineFont_);
        painter_.drawText(QPoint(0, 56), QString::fromStdString(book_.instrument));
        int y = 96;
        for (std::size_t i = 0; i < book_.parts.size(); ++i, y += 22) {
            painter_.drawText(QPoint(0, y), QString::fromStdString(book_.parts[i].name));
            painter_.drawText(QRect(0, y - 16, page_.width(), 22), Qt::AlignRight,
                              QString::number(2 + static_cast<int>(i) * pagesPerRoot));
        }
        pages_ = 1;
    }

    // One page of up to kChartsPerPage charts of a root, the `part`th of its pages.
    void ChordPage(const BookPart &root, int part) {
        pdf_.newPage();
        Footer(++pages_);
        const QString rootName = QString::fromStdString(root.name);
        painter_.setFont(titleFont_);
        painter_.drawText(QPoint(0, 30),
                          part == 0 ? rootName : rootName + QStringLiteral(" (continued)"));
        const QSize sheet = SheetSize();
        const double fit = std::min(1.0, static_cast<double>(page_.width()) / sheet.width());
        int top = 56;
        for (int k = 0; k < kChartsPerPage; ++k) {
            const std::size_t index = static_cast<std::size_t>(part * kChartsPerPage + k);
            if (index >= root.charts.size())
                break;
            const BookChart &chart = root.charts[index];
            painter_.setFont(lineFont_);
            painter_.drawText(QPoint(0, top + 14), QString::fromStdString(chart.title));
            painter_.save();
            painter_.translate(0, top + 22);
            painter_.scale(fit, fit);
            PaintSheet(painter_, chart.sheet, book_.orientation);
            painter_.restore();
            top += 22 + static_cast<int>(sheet.height() * fit) + 24;
        }
    }

    int Pages() const { return pages_; }

  private:
    // Every page but the contents carries its number, as the contents promise.
    void Footer(int number) {
        painter_.setFont(lineFont_);
        painter_.drawText(QRect(0, page_.height() - 22, page_.width(), 22),
                          Qt::AlignHCenter | Qt::AlignBottom, QString::number(number));
    }

    QPdfWriter &pdf_;
    QPainter &painter_;
    const Book &book_;
    QRect page_;
    QFont titleFont_{QStringLiteral("DejaVu Sans")};
    QFont lineFont_{QStringLiteral("DejaVu Sans")};
    int pages_ = 0;
};

} // namespace

Book MakeBook(ChartController &chart, const std::vector<int> &roots, const std::vector<int> &chords,
              const BookLook &look) {
    Book book;
    book.orientation = look.orientation;
    book.instrument = InstrumentTitle(chart.Sheet());
    for (std::size_t at = 0; at < roots.size(); ++at) {
        const int root = roots[at];
        // The `at`th root as typed; "" where none was, so each chart names
        // it as a player would.
        const std::string typed = at < look.rootNames.size() ? look.rootNames[at] : "";
        BookPart part;
        // The menu's text, which names both spellings, unless one was chosen.
        switch (look.spelling) {
        case Spelling::Sharps:
            part.name = items::kRoots.at(static_cast<std::size_t>(root));
            break;
        case Spelling::Flats:
            part.name = catalogue::FlatName(root);
            break;
        case Spelling::Chord:
        case Spelling::Musician:
            part.name = typed.empty() ? items::kRoots.at(static_cast<std::size_t>(root)) : typed;
            break;
        }
        chart.PopupMenu1->SetListIndex(root);
        for (const int chord : chords) {
            chart.PopupMenu2->SetListIndex(chord);
            ChartSheet sheet =
                Label(WithDegrees(Spell(chart.Sheet(), look.spelling, typed)), look.labels);
            std::string title = ChordTitle(sheet);
            part.charts.push_back({std::move(title), std::move(sheet)});
        }
        book.parts.push_back(std::move(part));
    }
    return book;
}

int WriteBook(const QString &path, const Book &book) {
    QSaveFile file(path);
    OpenForWriting(file);
    int pages = 0;
    {
        QPdfWriter pdf(&file);
        SetupPdf(pdf, QStringLiteral("Varnock chord book"));
        pdf.setPageSize(QPageSize(QPageSize::A4));
        pdf.setPageMargins(QMarginsF(12, 12, 12, 12), QPageLayout::Millimeter);
        QPainter painter;
        if (!painter.begin(&pdf))
            Fail(path, QStringLiteral("PDF writer failed"));
        BookWriter writer(pdf, painter, book);
        std::size_t most = 0;
        for (const BookPart &part : book.parts)
            most = std::max(most, part.charts.size());
        const int perRoot = static_cast<int>((most + kChartsPerPage - 1) / kChartsPerPage);
        writer.Contents(perRoot);
        for (const BookPart &part : book.parts)
            for (int page = 0; page < perRoot; ++page)
                writer.ChordPage(part, page);
        pages = writer.Pages();
    }
    Commit(file);
    return pages;
}

} // namespace varnock::cli
