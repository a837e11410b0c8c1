#include "zoFakeConfigurationService.h"
#include "zoTestCase.h"

#include <zoAssistantReportDialog.h>

#include <QApplication>
#include <QComboBox>
#include <QCryptographicHash>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QTemporaryDir>

#include <memory>

namespace
{
QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Of a file in the form that Qt writes; it names each page once.
int pagesOf(const QByteArray& pdf)
{
    return pdf.count("/Type /Page\n");
}

QByteArray boxOf(const QByteArray& pdf)
{
    const int begin = pdf.indexOf("/MediaBox [");
    return begin < 0 ? QByteArray() : pdf.mid(begin, pdf.indexOf(']', begin) - begin + 1);
}
} // namespace

// The report of the configuration that is open: shown, saved, printed.
class tst_zoAssistantReportDialog final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void pagesCanBeTurned();
    void savedFileHasAllPages_data();
    void savedFileHasAllPages();
    void sameContentIsTheSameFile();
    void titleAndPaperAreChosen();
    void checksumIsThatOfTheSavedFile();
    void changedConfigurationHasNoChecksum();
    void configurationIsNotOverwritten();
    void failedSaveIsTold();
    void printerGetsAllPages();
    void printerGetsTheChosenPages();
    void tooManyPagesAreRefused();

private:
    void open();
    template <class Widget>
    Widget* find(const char* name) const
    {
        return m_dialog->findChild<Widget*>(QLatin1String(name));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<zoFakeConfigurationService> m_service;
    std::unique_ptr<zoAssistantReportDialog> m_dialog;
};

void tst_zoAssistantReportDialog::init()
{
    qputenv("SOURCE_DATE_EPOCH", "1700000000");
    m_folder = std::make_unique<QTemporaryDir>();
    m_service = std::make_unique<zoFakeConfigurationService>();
    m_service->file = m_folder->filePath("wall.zhpc");
    QVERIFY(QFile::copy(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc", m_service->file));
    m_service->held = QString::fromUtf8(contentOf(m_service->file));
    open();
}

void tst_zoAssistantReportDialog::cleanup()
{
    m_dialog.reset();
    m_service.reset();
    m_folder.reset();
    qunsetenv("SOURCE_DATE_EPOCH");
    zoTestCase::cleanup();
}

void tst_zoAssistantReportDialog::open()
{
    m_dialog = std::make_unique<zoAssistantReportDialog>(*m_service);
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog.get()));
}

void tst_zoAssistantReportDialog::pagesCanBeTurned()
{
    const int pages = m_dialog->report().pageCount();
    QVERIFY(pages > 2);
    auto* page = find<QLabel>("m_page");
    QCOMPARE(page->text(), QStringLiteral("Page 1 of %1").arg(pages));
    QVERIFY(!find<QPushButton>("m_back")->isEnabled());
    auto* view = find<QWidget>("m_view");
    const QImage first = view->grab().toImage();

    find<QPushButton>("m_forth")->click();
    QCOMPARE(page->text(), QStringLiteral("Page 2 of %1").arg(pages));
    QVERIFY(view->grab().toImage() != first);
    for (int turn = 0; turn < pages; ++turn)
        QTest::keyClick(view, Qt::Key_PageDown);
    QCOMPARE(page->text(), QStringLiteral("Page %1 of %1").arg(pages));
    QVERIFY(!find<QPushButton>("m_forth")->isEnabled());
    for (int turn = 0; turn < pages; ++turn)
        QTest::keyClick(view, Qt::Key_PageUp);
    QCOMPARE(view->grab().toImage(), first);
}

void tst_zoAssistantReportDialog::savedFileHasAllPages_data()
{
    QTest::addColumn<QString>("paper");
    QTest::addColumn<QByteArray>("box"); // in points
    QTest::newRow("a4") << "A4" << QByteArray("842.000000 595.000000");
    QTest::newRow("a3") << "A3" << QByteArray("1191.000000 842.000000");
}

void tst_zoAssistantReportDialog::savedFileHasAllPages()
{
    QFETCH(QString, paper);
    QFETCH(QByteArray, box);
    auto* papers = find<QComboBox>("m_paper");
    papers->setCurrentIndex(papers->findText(paper));
    const QString file = m_folder->filePath("report");

    QVERIFY(m_dialog->savePdf(file));

    const QByteArray pdf = contentOf(file + ".pdf");
    QVERIFY(pdf.startsWith("%PDF-"));
    QCOMPARE(pagesOf(pdf), m_dialog->report().pageCount());
    QVERIFY2(boxOf(pdf).contains(box), boxOf(pdf).constData());
    QVERIFY(find<QLabel>("m_message")->text().contains("report.pdf"));
}

void tst_zoAssistantReportDialog::sameContentIsTheSameFile()
{
    QVERIFY(m_dialog->savePdf(m_folder->filePath("a.pdf")));
    open();
    QVERIFY(m_dialog->savePdf(m_folder->filePath("b.pdf")));

    QCOMPARE(contentOf(m_folder->filePath("a.pdf")), contentOf(m_folder->filePath("b.pdf")));
}

void tst_zoAssistantReportDialog::titleAndPaperAreChosen()
{
    QCOMPARE(find<QLineEdit>("m_title")->text(), QStringLiteral("wall"));
    QVERIFY(m_dialog->savePdf(m_folder->filePath("a.pdf")));

    find<QLineEdit>("m_title")->setText("Hall 7");
    QVERIFY(m_dialog->savePdf(m_folder->filePath("b.pdf")));

    const QByteArray pdf = contentOf(m_folder->filePath("b.pdf"));
    QVERIFY(pdf != contentOf(m_folder->filePath("a.pdf")));
    // Of the document; in UTF-16.
    QVERIFY(pdf.contains(QByteArray::fromRawData("\0H\0a\0l\0l\0 \0007", 12)));
}

void tst_zoAssistantReportDialog::checksumIsThatOfTheSavedFile()
{
    QVERIFY(m_dialog->savePdf(m_folder->filePath("a.pdf")));
    // Another spelling of the same configuration is another file.
    QFile file(m_service->file);
    QVERIFY(file.open(QIODevice::Append));
    file.write("<!-- kept -->\n");
    file.close();
    open();

    QVERIFY(m_dialog->savePdf(m_folder->filePath("b.pdf")));

    QVERIFY(contentOf(m_folder->filePath("a.pdf")) != contentOf(m_folder->filePath("b.pdf")));
    QCOMPARE(QString::fromLatin1(m_dialog->subject().checksum),
             QString::fromLatin1(
                 QCryptographicHash::hash(contentOf(m_service->file), QCryptographicHash::Sha256).toHex()));
    QCOMPARE(m_dialog->subject().fileName, QStringLiteral("wall.zhpc"));
}

void tst_zoAssistantReportDialog::changedConfigurationHasNoChecksum()
{
    m_service->held.replace("wall-r1-c1", "other");
    open();

    QVERIFY(m_dialog->subject().checksum.isEmpty());
    QCOMPARE(m_dialog->subject().fileName, QStringLiteral("wall.zhpc, with changes that are not saved"));

    m_service->file.clear();
    open();
    QVERIFY(m_dialog->subject().checksum.isEmpty());
    QCOMPARE(m_dialog->subject().fileName, QStringLiteral("not saved"));
}

void tst_zoAssistantReportDialog::configurationIsNotOverwritten()
{
    const QByteArray before = contentOf(m_service->file);

    QVERIFY(!m_dialog->savePdf(m_service->file));

    QCOMPARE(contentOf(m_service->file), before);
    QVERIFY(!find<QLabel>("m_message")->text().isEmpty());
}

void tst_zoAssistantReportDialog::failedSaveIsTold()
{
    QVERIFY(!m_dialog->savePdf(m_folder->filePath("no/such/folder/a.pdf")));

    QVERIFY2(find<QLabel>("m_message")->text().contains("a.pdf"),
             qPrintable(find<QLabel>("m_message")->text()));
    QVERIFY(m_dialog->isVisible());
}

void tst_zoAssistantReportDialog::printerGetsAllPages()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(m_folder->filePath("printed.pdf"));
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageOrientation(QPageLayout::Landscape);

    QVERIFY(m_dialog->printOn(printer));

    const QByteArray pdf = contentOf(m_folder->filePath("printed.pdf"));
    QCOMPARE(pagesOf(pdf), m_dialog->report().pageCount());
    QVERIFY(find<QLabel>("m_message")->text().endsWith("pages printed"));
}

void tst_zoAssistantReportDialog::printerGetsTheChosenPages()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(m_folder->filePath("printed.pdf"));
    printer.setFromTo(2, 2);

    QVERIFY(m_dialog->printOn(printer));
    QCOMPARE(pagesOf(contentOf(m_folder->filePath("printed.pdf"))), 1);
    QCOMPARE(find<QLabel>("m_message")->text(), QStringLiteral("1 page printed"));

    // Beyond the last one there is nothing.
    printer.setFromTo(m_dialog->report().pageCount() + 1, m_dialog->report().pageCount() + 1);
    QVERIFY(!m_dialog->printOn(printer));
    QVERIFY(find<QLabel>("m_message")->text().startsWith("Unable"));
}

void tst_zoAssistantReportDialog::tooManyPagesAreRefused()
{
    QVERIFY(find<QPushButton>("m_save")->isEnabled());
    m_service->held = "<cluster version=\"1\"><master><network>" + QString("<node/>").repeated(120000) +
                      "</network></master></cluster>";

    open();

    QCOMPARE(m_dialog->report().pageCount(), 0);
    QVERIFY(find<QLabel>("m_message")->text().contains("more than 4000 pages, with 120000 nodes"));
    QCOMPARE(find<QLabel>("m_page")->text(), QString());
    for (const char* name : {"m_save", "m_print", "m_back", "m_forth"})
        QVERIFY2(!find<QPushButton>(name)->isEnabled(), name);
    const QString file = m_folder->filePath("large.pdf");
    QVERIFY(!m_dialog->savePdf(file));
    QVERIFY(!QFile::exists(file));
}

ZO_TEST_MAIN(tst_zoAssistantReportDialog)
#include "tst_zoAssistantReportDialog.moc"
