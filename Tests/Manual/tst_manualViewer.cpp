#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>

#include <memory>

// The viewer of the host's F1; it writes down what a page names and does not find.
class Viewer final : public QTextBrowser
{
    Q_OBJECT

public:
    QStringList missing;

protected:
    QVariant loadResource(int type, const QUrl& name) override
    {
        const QVariant resource = QTextBrowser::loadResource(type, name);
        if (resource.isNull())
            missing << name.toString();
        return resource;
    }
};

// The built pages as the viewer shows them.
class tst_manualViewer final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void pageFitsTheViewer_data();
    void pageFitsTheViewer();
    void headingIsFoundByItsAnchor();

private:
    static QUrl page(const QString& name);

    std::unique_ptr<Viewer> m_viewer;
};

QUrl tst_manualViewer::page(const QString& name)
{
    return QUrl::fromLocalFile(QDir(QStringLiteral(ZO_MANUAL_HTML)).filePath(name));
}

void tst_manualViewer::init()
{
    m_viewer = std::make_unique<Viewer>();
    m_viewer->resize(760, 500); // beside the window that is asked about, on a screen of 1366 x 768
    m_viewer->show();
}

void tst_manualViewer::cleanup()
{
    m_viewer.reset();
    zoTestCase::cleanup();
}

void tst_manualViewer::pageFitsTheViewer_data()
{
    QTest::addColumn<QString>("name");

    const QStringList names = QDir(QStringLiteral(ZO_MANUAL_HTML)).entryList({QStringLiteral("*.html")});
    QVERIFY(names.contains(QStringLiteral("index.html")));
    for (const QString& name : names)
        QTest::newRow(qPrintable(name)) << name;
}

void tst_manualViewer::pageFitsTheViewer()
{
    QFETCH(QString, name);

    m_viewer->setSource(page(name));
    QApplication::processEvents();

    QVERIFY(!m_viewer->documentTitle().isEmpty());
    QVERIFY(m_viewer->verticalScrollBar()->maximum() > 0 || !m_viewer->toPlainText().isEmpty());
    // Qt 6 lays a long page out bit by bit, at first without room for the bar at its side.
    QTRY_COMPARE(m_viewer->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(m_viewer->missing, QStringList());
    // What Markdown did not understand stands there as it was typed.
    static const QRegularExpression marks(QStringLiteral("^\\|---|^```|^##+ |\\]\\(|!\\["),
                                          QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = marks.match(m_viewer->toPlainText());
    QVERIFY2(!match.hasMatch(), qPrintable(match.captured()));
}

void tst_manualViewer::headingIsFoundByItsAnchor()
{
    m_viewer->setSource(page(QStringLiteral("problems.html")));
    QApplication::processEvents();

    m_viewer->scrollToAnchor(QStringLiteral("wall-in-metres"));

    QVERIFY(m_viewer->verticalScrollBar()->value() > 0);
    const QString shown = m_viewer->cursorForPosition(QPoint(20, 12)).block().text();
    QCOMPARE(shown, QStringLiteral("wall-in-metres"));
}

ZO_TEST_MAIN(tst_manualViewer)
#include "tst_manualViewer.moc"
