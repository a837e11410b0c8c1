#pragma once

#include <QCoreApplication>
#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class QPainter;

// The sheets of a report: texts, tables and pictures from the top of a page to its end and on to the next. Texts are
// broken, rows go on the next page under the same header; nothing is cut off. Lengths are units of 1/720 inch.
class zoHPCReportSheets final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCReportSheets)

public:
    static constexpr int Resolution = 720;       // units per inch
    static constexpr double Point = 10.0;        // units
    static constexpr double Margin = 36 * Point; // of a page, on each side

    enum class Style { Title, Heading, Text, Strong, Table, TableHeader, Foot };

    struct Column
    {
        QString title;
        double share; // of the width of the page, in proportion to the others
    };

    using Paint = std::function<void(QPainter& painter, const QRectF& area)>;

    // Of the whole page. What goes beyond the last of `mostPages` is not kept: there is one page more, which is empty.
    zoHPCReportSheets(const QSizeF& page, int mostPages);

    // What stands at the foot of each page beside its number; cut in its middle where it is too long.
    void setFoot(const QString& text) { m_foot = text; }

    // Section of its own; on a new page when less than this part of the present one is left.
    void addHeading(const QString& text, double least = 0.33);
    void addText(const QString& text, Style style = Style::Text);
    void addGap(double height) { m_y += height; }
    // Rows have a cell for each column; "\n" begins a new line in a cell. `hasBox` puts an empty box to tick into the
    // last one.
    void addTable(const std::vector<Column>& columns, const std::vector<QStringList>& rows,
                  bool hasBox = false);
    // A picture over the whole width; on a new page when this one has less room.
    void addPicture(double height, const Paint& paint);
    void beginPage();

    // Between the margins.
    double width() const { return m_page.width() - 2 * Margin; }
    double height() const { return m_page.height() - 2 * Margin - FootHeight; }
    double leftHeight() const { return height() - m_y; } // on this page

    int pageCount() const { return int(m_pages.size()); }
    bool isFull() const { return pageCount() > m_mostPages; }
    // Pages count from 0.
    void paint(QPainter& painter, int page) const;

    static QFont font(Style style);
    static QFont font(double points, bool isBold);
    static double lineHeight(const QFont& font);
    // As many lines as it takes; words are broken where one is wider.
    static QStringList lines(const QString& text, const QFont& font, double width);

private:
    static constexpr double FootHeight = 20 * Point;
    static constexpr double CellMargin = 4 * Point;

    struct Piece
    {
        QPointF at; // left end of the base line
        QString text;
        Style style;
    };
    struct Area
    {
        QRectF area;
        Paint paint;
    };
    struct Page
    {
        std::vector<Area> areas; // below the texts
        std::vector<Piece> pieces;
    };

    using Cells = std::vector<QStringList>; // lines

    void addLines(const QStringList& lines, Style style, double x);
    void addRule(double y, double thickness);
    static Cells brokenRow(const QStringList& row, const std::vector<double>& widths, Style style,
                           const QStringList& rowAbove, const Cells& above);
    void placeRow(const Cells& row, int from, int count, const std::vector<double>& widths, Style style,
                  bool hasBox);
    void placeHeader(const Cells& header, const std::vector<double>& widths);

    QSizeF m_page;
    int m_mostPages;
    QString m_foot;
    std::vector<Page> m_pages;
    double m_y = 0.0; // below the upper margin
};
