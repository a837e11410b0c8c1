#pragma once

#include "zoHPCProblem.h"
#include "zoHPCReportFacts.h"
#include "zoHPCReportSheets.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDateTime>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <vector>

class QIODevice;

// What an installer takes to a wall, on sheets of paper: front elevations with the node, screen, row and column of each
// tile, the order of the cables, a table of all windows with pixels, corners and blends, the networks, the viewer and
// the problems. Black on white, in letters that are read at arm's length.
class zoHPCReport final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCReport)

public:
    enum class Paper { A4, A3 };

    // Of a wall of 100 x 100 tiles there are three thousand; nobody carries more.
    static constexpr int MaximumPages = 4000;
    // Projections and tiles that stand in tables, however few bytes describe them: as many words are shaped, painted and
    // packed within a few seconds.
    static constexpr int MaximumSurfaces = 50000;

    struct Problem
    {
        zoHPCProblem::Kind kind;
        QString place; // "line 12"; empty where there is no text
        QString text;
        QString fix; // empty where there is none
    };

    struct Subject
    {
        QString title;
        QString fileName;    // as people call it
        QByteArray checksum; // SHA-256 of the file's bytes, see checksumOf(); empty for what is in no file
        QDateTime date;      // of the report
    };

    // Reads what there is to tell; the items must outlive the report. `pixelPitch` is the size of a pixel of tiled
    // walls in millimetres, 0 when it is not known. No master means no nodes.
    zoHPCReport(const Subject& subject, const zoHPCDisplaySetup& displays, zoHPCTreeItem* master,
                const std::vector<Problem>& problems, double pixelPitch, Paper paper);

    static QByteArray checksumOf(const QByteArray& bytes);
    // In landscape, in millimetres.
    static QSizeF sizeOf(Paper paper);

    // Why there is nothing to be shown or written: it would have more than MaximumPages, or MaximumSurfaces. Empty
    // otherwise.
    const QString& refusal() const { return m_refusal; }
    int pageCount() const { return m_refusal.isEmpty() ? m_sheets.pageCount() : 0; }
    // For printers: pages count from 0, the painter's unit is 1/zoHPCReportSheets::Resolution inch.
    void paint(QPainter& painter, int page) const { m_sheets.paint(painter, page); }
    // False when there are no pages, or the device fails. See zoHPCPdfFile.
    bool writePdf(QIODevice& device) const;

private:
    void addOverview(const std::vector<Problem>& problems);
    void addRoom();
    void addElevations();
    void addCables();
    void addWindows();
    void addNetworks();
    void addViewer();
    void addPlaces(const zoHPCReportWalls::Wall& wall, std::vector<QStringList>& rows) const;
    void addProblems(const std::vector<Problem>& problems);
    QString tooManyPages(std::size_t problems) const;

    Subject m_subject;
    Paper m_paper;
    zoHPCReportFacts m_facts;
    zoHPCReportSheets m_sheets;
    QString m_refusal;
};
