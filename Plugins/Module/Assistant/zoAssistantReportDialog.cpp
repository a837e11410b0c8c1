#include "zoAssistantReportDialog.h"

#include "zoAssistantCounts.h"
#include "zoAssistantNumberField.h"
#include "zoAssistantPageView.h"
#include "zoHPCLayout.h"
#include "zoHPCPdfFile.h"
#include "zoHPCProblems.h"
#include "zoText.h"

#include <zoConfigurationService.h>
#include <zoFileReader.h>
#include <zoFileText.h>
#include <zoFileWriter.h>

#include <QBuffer>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
using Paper = zoHPCReport::Paper;

constexpr int PartsGap = 24; // pixels
constexpr double UnitsPerMillimetre = zoHPCReportSheets::Resolution / 25.4;

QPageSize::PageSizeId pageSizeOf(Paper paper)
{
    return paper == Paper::A4 ? QPageSize::A4 : QPageSize::A3;
}
} // namespace

zoAssistantReportDialog::zoAssistantReportDialog(const zoConfigurationService& configuration, QWidget* parent)
    : QDialog(parent)
    , m_view(new zoAssistantPageView)
    , m_paper(new QComboBox)
    , m_title(new QLineEdit)
    , m_pitch(new zoAssistantNumberField(0, 1000, 4, zoAssistantNumberField::Unit::Millimetre))
    , m_back(new QPushButton(zoText("<")))
    , m_forth(new QPushButton(zoText(">")))
    , m_page(new QLabel)
    , m_message(new QLabel)
    , m_save(new QPushButton(tr("&Save as PDF...")))
    , m_print(new QPushButton(tr("&Print...")))
{
    setObjectName(zoText("zoAssistantReportDialog"));
    setProperty("manualPage", zoText("assistant#report"));
    setWindowTitle(tr("Report"));
    readConfiguration(configuration);
    createParts();
    layOut();
    make();
    m_view->setFocus();
}

zoAssistantReportDialog::~zoAssistantReportDialog() = default;

// The checksum is that of the file, if that is what is told of.
void zoAssistantReportDialog::readConfiguration(const zoConfigurationService& configuration)
{
    m_configuration.readText(configuration.text());
    m_file = configuration.fileName();
    m_subject.date = zoHPCPdfFile::date();
    m_subject.fileName = m_file.isEmpty() ? tr("not saved") : QFileInfo(m_file).fileName();
    m_subject.title = m_file.isEmpty() ? tr("Report") : QFileInfo(m_file).completeBaseName();
    QByteArray bytes;
    zoHPCConfiguration saved;
    if (!m_file.isEmpty() && zoFileReader::read(m_file, bytes) == zoFileReader::Result::Read &&
        saved.readText(zoFileText(bytes).text()) && saved.text() == m_configuration.text())
        m_subject.checksum = zoHPCReport::checksumOf(bytes);
    else if (!m_file.isEmpty())
        m_subject.fileName = tr("%1, with changes that are not saved").arg(m_subject.fileName);
    const zoHPCLayout layout(m_configuration.displays(), m_configuration.hosts().master());
    const zoHPCProblems::List problems = zoHPCProblems::find(layout);
    for (const zoHPCProblem& problem : problems)
        m_problems.push_back({problem.kind, QString(), problem.message, problem.fixText});
}

void zoAssistantReportDialog::createParts()
{
    m_view->setObjectName(zoText("m_view"));
    m_paper->setObjectName(zoText("m_paper"));
    m_paper->addItem(zoText("A4"), int(Paper::A4));
    m_paper->addItem(zoText("A3"), int(Paper::A3));
    m_title->setObjectName(zoText("m_title"));
    m_title->setText(m_subject.title);
    m_pitch->setObjectName(zoText("m_pitch"));
    m_pitch->setSpecialValueText(tr("not known"));
    m_pitch->setToolTip(tr("Of tiled walls, which have no size of their own"));
    m_back->setObjectName(zoText("m_back"));
    m_back->setAccessibleName(tr("Page before"));
    m_forth->setObjectName(zoText("m_forth"));
    m_forth->setAccessibleName(tr("Next page"));
    for (QPushButton* button : {m_back, m_forth})
        button->setAutoDefault(false);
    m_page->setObjectName(zoText("m_page"));
    m_message->setObjectName(zoText("m_message"));
    m_message->setWordWrap(true);
    m_save->setObjectName(zoText("m_save"));
    m_print->setObjectName(zoText("m_print"));
    connect(m_save, &QPushButton::clicked, this, &zoAssistantReportDialog::save);
    connect(m_print, &QPushButton::clicked, this, &zoAssistantReportDialog::print);
    connect(m_paper, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] { make(); });
    connect(m_title, &QLineEdit::textChanged, this, [this] { make(); });
    connect(m_pitch, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this] { make(); });
    const auto shown = [this] { return m_page->property("page").toInt(); };
    connect(m_back, &QPushButton::clicked, this, [this, shown] { showPage(shown() - 1); });
    connect(m_forth, &QPushButton::clicked, this, [this, shown] { showPage(shown() + 1); });
    connect(m_view, &zoAssistantPageView::turned, this,
            [this, shown](int pages) { showPage(shown() + pages); });
}

void zoAssistantReportDialog::layOut()
{
    auto* form = new QFormLayout;
    form->addRow(tr("&Title:"), m_title);
    auto* pitchLabel = new QLabel(tr("Si&ze of a pixel:"));
    pitchLabel->setBuddy(m_pitch);
    auto* sizes = new QHBoxLayout;
    sizes->addWidget(m_paper);
    sizes->addSpacing(PartsGap);
    sizes->addWidget(pitchLabel);
    sizes->addWidget(m_pitch);
    sizes->addStretch();
    form->addRow(tr("P&aper:"), sizes);
    static_cast<QLabel*>(form->labelForField(sizes))->setBuddy(m_paper);
    auto* turning = new QHBoxLayout;
    turning->addStretch();
    turning->addWidget(m_back);
    turning->addWidget(m_page);
    turning->addWidget(m_forth);
    turning->addStretch();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->addButton(m_save, QDialogButtonBox::AcceptRole);
    buttons->addButton(m_print, QDialogButtonBox::ActionRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_view, 1);
    layout->addLayout(turning);
    layout->addWidget(m_message);
    layout->addWidget(buttons);
    m_save->setDefault(true);
}

void zoAssistantReportDialog::make()
{
    m_subject.title = m_title->text().trimmed().isEmpty() ? tr("Report") : m_title->text().trimmed();
    m_view->showPage({}, {});
    m_report = std::make_unique<zoHPCReport>(m_subject, m_configuration.displays(),
                                             m_configuration.hosts().master(), m_problems, m_pitch->value(),
                                             static_cast<Paper>(m_paper->currentData().toInt()));
    const QString& refusal = m_report->refusal();
    for (QPushButton* button : {m_save, m_print})
        button->setEnabled(refusal.isEmpty());
    tell(refusal.isEmpty() ? QString() : tr("No page can be shown: %1.").arg(refusal));
    showPage(m_page->property("page").toInt());
}

void zoAssistantReportDialog::showPage(int page)
{
    const int shown = std::max(0, std::min(page, m_report->pageCount() - 1));
    m_page->setProperty("page", shown);
    if (m_report->pageCount() == 0) {
        m_page->clear();
        m_back->setEnabled(false);
        m_forth->setEnabled(false);
        m_view->showPage({}, {});
        return;
    }
    m_page->setText(tr("Page %1 of %2").arg(shown + 1).arg(m_report->pageCount()));
    m_back->setEnabled(shown > 0);
    m_forth->setEnabled(shown + 1 < m_report->pageCount());
    const zoHPCReport* const report = m_report.get();
    const QSizeF paper = zoHPCReport::sizeOf(static_cast<Paper>(m_paper->currentData().toInt()));
    m_view->showPage(paper * UnitsPerMillimetre,
                     [report, shown](QPainter& painter) { report->paint(painter, shown); });
}

void zoAssistantReportDialog::tell(const QString& text)
{
    m_message->setText(text);
}

void zoAssistantReportDialog::save()
{
    if (!m_save->isEnabled())
        return;
    const QFileInfo open(m_file);
    const QString name = m_file.isEmpty() ? zoText("report") : open.completeBaseName();
    const QString folder = m_file.isEmpty() ? QDir::homePath() : open.absolutePath();
    const QString fileName = QFileDialog::getSaveFileName(
        this, tr("Save Report"), QDir(folder).filePath(name + zoText(".pdf")), tr("Report (*.pdf)"));
    if (!fileName.isEmpty())
        savePdf(fileName);
}

bool zoAssistantReportDialog::savePdf(const QString& fileName)
{
    if (!m_report->refusal().isEmpty())
        return false;
    const QString file = QFileInfo(fileName).suffix().isEmpty() ? fileName + zoText(".pdf") : fileName;
    const QString shown = QDir::toNativeSeparators(file);
    // Two files that are not there are equal to each other.
    const QFileInfo target(file);
    const QFileInfo open(m_file);
    if (!m_file.isEmpty() && (target.absoluteFilePath() == open.absoluteFilePath() ||
                              (target.exists() && open.exists() && target == open))) {
        tell(tr("%1 is the configuration").arg(shown));
        return false;
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QString reason;
    if (!m_report->writePdf(buffer) ||
        zoFileWriter::write(file, buffer.data(), &reason) != zoFileWriter::Result::Written) {
        tell(tr("Unable to save report %1: %2").arg(shown, reason));
        return false;
    }
    tell(tr("%1 is saved").arg(shown));
    return true;
}

void zoAssistantReportDialog::print()
{
    if (!m_print->isEnabled())
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setPageSize(QPageSize(pageSizeOf(static_cast<Paper>(m_paper->currentData().toInt()))));
    printer.setDocName(m_subject.title);
    QPrintDialog dialog(&printer, this);
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                      QAbstractPrintDialog::PrintShowPageSize);
    dialog.setMinMax(1, m_report->pageCount());
    if (dialog.exec() == QDialog::Accepted)
        printOn(printer);
}

bool zoAssistantReportDialog::printOn(QPrinter& printer)
{
    if (!m_report->refusal().isEmpty())
        return false;
    const int first = printer.fromPage() > 0 ? printer.fromPage() : 1;
    const int last =
        printer.toPage() > 0 ? std::min(printer.toPage(), m_report->pageCount()) : m_report->pageCount();
    printer.setFullPage(true);
    QPainter painter;
    bool isGood = first <= last && painter.begin(&printer);
    for (int page = first; isGood && page <= last; ++page) {
        isGood = page == first || printer.newPage();
        painter.save();
        // Whatever paper the printer was given, the page fills it as far as its shape allows.
        const QSizeF paper =
            zoHPCReport::sizeOf(static_cast<Paper>(m_paper->currentData().toInt())) * UnitsPerMillimetre;
        const QRectF sheet = printer.paperRect(QPrinter::DevicePixel);
        const double scale = std::min(sheet.width() / paper.width(), sheet.height() / paper.height());
        painter.scale(scale, scale);
        m_report->paint(painter, page - 1);
        painter.restore();
    }
    isGood = isGood && painter.end();
    tell(isGood ? zoAssistantCounts::pagesPrinted(last - first + 1) : tr("Unable to print the report"));
    return isGood;
}
