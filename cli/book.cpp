#include "cli/book.h"

#include "chart/controller.h"
#include "chart/sheet.h"
#include "cli/chartdoc.h"
#include "cli/spelling.h"
#include "cli/writers.h"

#include <QFont>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <algorithm>

namespace varnock::chart {

namespace {

class BookWriter {
  public:
    BookWriter(QPdfWriter &pdf, QPainter &painter, ChartController &chart, const BookLook &look)
        : pdf_(pdf), painter_(painter), chart_(chart), look_(look), page_(painter.viewport()) {
        titleFont_.setPixelSize(22);
        titleFont_.setBold(true);
        lineFont_.setPixelSize(13);
    }

    // The instrument, then each root with the number of its first page.
    void Contents(const std::vector<int> &roots, int pagesPerRoot) {
        painter_.setPen(Qt::black);
        painter_.setFont(titleFont_);
        painter_.drawText(QPoint(0, 30), QStringLiteral("Chord book"));
        painter_.setFont(lineFont_);
        painter_.drawText(QPoint(0, 56), QString::fromStdString(InstrumentTitle(chart_)));
        int y = 96;
        for (std::size_t i = 0; i < roots.size(); ++i, y += 22) {
            painter_.drawText(QPoint(0, y), QString::fromStdString(RootName(roots[i], i)));
            painter_.drawText(QRect(0, y - 16, page_.width(), 22), Qt::AlignRight,
                              QString::number(2 + static_cast<int>(i) * pagesPerRoot));
        }
        pages_ = 1;
    }

    // One page of up to kChartsPerPage charts of the `at`th root, the `part`th
    // of its pages.
    void ChordPage(int root, std::size_t at, int part, const std::vector<int> &chords) {
        pdf_.newPage();
        Footer(++pages_);
        const std::string name = RootName(root, at);
        const QString rootName = QString::fromStdString(name);
        painter_.setFont(titleFont_);
        painter_.drawText(QPoint(0, 30),
                          part == 0 ? rootName : rootName + QStringLiteral(" (continued)"));
        const QSize sheet = SheetSize();
        const double fit = std::min(1.0, static_cast<double>(page_.width()) / sheet.width());
        int top = 56;
        for (int k = 0; k < kChartsPerPage; ++k) {
            const std::size_t index = static_cast<std::size_t>(part * kChartsPerPage + k);
            if (index >= chords.size())
                break;
            chart_.PopupMenu2->SetListIndex(chords[index]);
            ApplySpelling(chart_, look_.spelling, TypedRoot(root, at));
            painter_.setFont(lineFont_);
            const std::string title =
                look_.spelling == theory::Spelling::Sharps
                    ? ChordTitle(chart_)
                    : name + " " + chart_.PopupMenu2->List(chart_.PopupMenu2->ListIndex());
            painter_.drawText(QPoint(0, top + 14), QString::fromStdString(title));
            painter_.save();
            painter_.translate(0, top + 22);
            painter_.scale(fit, fit);
            PaintSheet(painter_, chart_, look_.orientation);
            painter_.restore();
            top += 22 + static_cast<int>(sheet.height() * fit) + 24;
        }
    }

    int Pages() const { return pages_; }

  private:
    // The `at`th root as typed, or its sharp name where no names were given.
    std::string TypedRoot(int root, std::size_t at) const {
        return at < look_.rootNames.size() ? look_.rootNames[at] : theory::SharpName(root);
    }

    // The menu's text, which names both spellings, unless one was chosen.
    std::string RootName(int root, std::size_t at) const {
        switch (look_.spelling) {
        case theory::Spelling::Sharps:
            break;
        case theory::Spelling::Flats:
            return theory::FlatName(root);
        case theory::Spelling::Chord:
            return TypedRoot(root, at);
        }
        return chart_.PopupMenu1->List(root);
    }

    // Every page but the contents carries its number, as the contents promise.
    void Footer(int number) {
        painter_.setFont(lineFont_);
        painter_.drawText(QRect(0, page_.height() - 22, page_.width(), 22),
                          Qt::AlignHCenter | Qt::AlignBottom, QString::number(number));
    }

    QPdfWriter &pdf_;
    QPainter &painter_;
    ChartController &chart_;
    const BookLook &look_;
    QRect page_;
    QFont titleFont_{QStringLiteral("DejaVu Sans")};
    QFont lineFont_{QStringLiteral("DejaVu Sans")};
    int pages_ = 0;
};

} // namespace

int WriteBook(const QString &path, ChartController &chart, const std::vector<int> &roots,
              const std::vector<int> &chords, const BookLook &look) {
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
        BookWriter book(pdf, painter, chart, look);
        const int perRoot = static_cast<int>((chords.size() + kChartsPerPage - 1) / kChartsPerPage);
        book.Contents(roots, perRoot);
        for (std::size_t at = 0; at < roots.size(); ++at) {
            chart.PopupMenu1->SetListIndex(roots[at]);
            for (int part = 0; part < perRoot; ++part)
                book.ChordPage(roots[at], at, part, chords);
        }
        pages = book.Pages();
    }
    Commit(file);
    return pages;
}

} // namespace varnock::chart
