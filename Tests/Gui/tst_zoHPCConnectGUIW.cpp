#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoHPCConnectGUIW.h>

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QWindow>

#include <algorithm>
#include <cmath>

// The connection progress overlay.
class tst_zoHPCConnectGUIW final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void windowIsAFramelessModalTool();
    void textsAreThere();
    void progressShowsTextAndValue();
    void namesOfManyNodesAreNotCutOff();
    void negativeValueIsBusyAndTheNextOnePercentAgain();
    void barWithTenStepsIsLeftAlone();
    void finishedHides();
    void keysGoBackToTheHost();
    void keysThatAreElsewhereStayThere();
    void serviceSignalsDriveTheOverlay();
    void abortDisablesTheButtonAndCallsTheService();
    void escapeAbortsOnceAndTheOverlayStays();
    void nextAttemptCanBeAbortedAgain();
    void setAbortEnabledAbortsWhateverItIsTold_data();
    void setAbortEnabledAbortsWhateverItIsTold();
    void cornerPixelIsOutsideTheRoundedRegion();
    void roundedRegionFollowsTheFormula();
    void paintingSetsTheMask();
    void plateIsTranslucentBlackWithAGreyEdge();
    void textIsReadableOnAnyBackground_data();
    void textIsReadableOnAnyBackground();

private:
    std::unique_ptr<zoFakeHost> m_host;
    zoHPCConnectGUIW* m_overlay = nullptr; // owned by the host's window
    QLabel* label() const { return m_overlay->findChild<QLabel*>(QStringLiteral("m_label")); }
    QProgressBar* bar() const { return m_overlay->findChild<QProgressBar*>(QStringLiteral("m_progressBar")); }
    QPushButton* button() const
    {
        return m_overlay->findChild<QPushButton*>(QStringLiteral("m_abortButton"));
    }
};

void tst_zoHPCConnectGUIW::init()
{
    m_host = std::make_unique<zoFakeHost>();
    m_overlay = new zoHPCConnectGUIW(m_host->mainWindowWidget(), QStringLiteral("overlay"));
}

void tst_zoHPCConnectGUIW::cleanup()
{
    m_host.reset();
    zoTestCase::cleanup();
}

void tst_zoHPCConnectGUIW::windowIsAFramelessModalTool()
{
    QVERIFY((m_overlay->windowFlags() & Qt::Tool) == Qt::Tool);
    QVERIFY(m_overlay->windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(m_overlay->isModal());
    QVERIFY(m_overlay->testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(m_overlay->objectName(), QStringLiteral("overlay"));
    QVERIFY(!m_overlay->isVisible());
}

void tst_zoHPCConnectGUIW::textsAreThere()
{
    QCOMPARE(m_overlay->windowTitle(), QStringLiteral("Cluster"));
    QCOMPARE(label()->text(), QStringLiteral("Connecting to cluster servers ..."));
    QCOMPARE(button()->text(), QStringLiteral("Abort"));
}

void tst_zoHPCConnectGUIW::progressShowsTextAndValue()
{
    m_overlay->setProgress(QStringLiteral("node %1"), 40);

    QCOMPARE(label()->text(), QStringLiteral("node %1"));
    QCOMPARE(bar()->maximum(), 100);
    QCOMPARE(bar()->value(), 40);
    QVERIFY(m_overlay->isVisible());
}

void tst_zoHPCConnectGUIW::namesOfManyNodesAreNotCutOff()
{
    m_overlay->setProgress(QStringLiteral("x"), 0);
    QStringList names;
    for (int i = 1; i <= 8; ++i)
        names << QStringLiteral("visualisation%1").arg(i);

    m_overlay->setProgress(QStringLiteral("Connecting to %1 ...").arg(names.join(QStringLiteral(", "))), 0);

    QTRY_VERIFY2(label()->height() >= label()->heightForWidth(label()->width()),
                 qPrintable(QString::number(label()->height())));
    QVERIFY(label()->heightForWidth(label()->width()) > 3 * label()->fontMetrics().height());
}

void tst_zoHPCConnectGUIW::negativeValueIsBusyAndTheNextOnePercentAgain()
{
    m_overlay->setProgress(QStringLiteral("x"), -1);
    QCOMPARE(bar()->maximum(), 0);

    m_overlay->setProgress(QStringLiteral("y"), 40);
    QCOMPARE(bar()->minimum(), 0);
    QCOMPARE(bar()->maximum(), 100);
    QCOMPARE(bar()->value(), 40);
}

void tst_zoHPCConnectGUIW::barWithTenStepsIsLeftAlone()
{
    bar()->setMaximum(10);

    m_overlay->setProgress(QStringLiteral("x"), 4);

    QCOMPARE(bar()->maximum(), 10);
    QCOMPARE(bar()->value(), 4);
}

void tst_zoHPCConnectGUIW::finishedHides()
{
    m_overlay->setProgress(QStringLiteral("x"), 40);

    m_overlay->setFinished();

    QVERIFY(!m_overlay->isVisible());
}

// The window manager is only asked for a window that the one with the keys does not belong to.
void tst_zoHPCConnectGUIW::keysGoBackToTheHost()
{
    QWidget* host = m_host->mainWindowWidget();
    host->show();
    QVERIFY(QTest::qWaitForWindowActive(host));
    m_overlay->setProgress(QStringLiteral("x"), 40);
    m_overlay->activateWindow();
    QTRY_VERIFY(m_overlay->isActiveWindow());
    QVector<QWindow*> parents;
    connect(m_overlay->windowHandle(), &QWindow::transientParentChanged, this,
            [&parents](QWindow* parent) { parents << parent; });

    m_overlay->setFinished();

    QCOMPARE(parents, QVector<QWindow*>({nullptr, host->windowHandle()}));
    QTRY_COMPARE(QApplication::activeWindow(), host);
}

void tst_zoHPCConnectGUIW::keysThatAreElsewhereStayThere()
{
    m_host->mainWindowWidget()->show();
    m_overlay->setProgress(QStringLiteral("x"), 40);
    m_overlay->setModal(false); // else no other window of this program could have the keys
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));

    m_overlay->setFinished();

    QCoreApplication::processEvents();
    QCOMPARE(QApplication::activeWindow(), &other);
}

void tst_zoHPCConnectGUIW::serviceSignalsDriveTheOverlay()
{
    emit m_host->cluster.progressChanged(QStringLiteral("node01"), 25);
    QCOMPARE(label()->text(), QStringLiteral("node01"));
    QCOMPARE(bar()->value(), 25);
    QVERIFY(m_overlay->isVisible());

    emit m_host->cluster.progressFinished();
    QVERIFY(!m_overlay->isVisible());
}

void tst_zoHPCConnectGUIW::abortDisablesTheButtonAndCallsTheService()
{
    m_overlay->setProgress(QStringLiteral("x"), 40);

    QTest::mouseClick(button(), Qt::LeftButton);

    QVERIFY(!button()->isEnabled());
    QCOMPARE(m_host->cluster.calls, QStringList{QStringLiteral("abort")});
}

void tst_zoHPCConnectGUIW::escapeAbortsOnceAndTheOverlayStays()
{
    m_overlay->setProgress(QStringLiteral("x"), 40);

    QTest::keyClick(m_overlay, Qt::Key_Escape);
    QTest::keyClick(m_overlay, Qt::Key_Escape);

    QCOMPARE(m_host->cluster.calls, QStringList{QStringLiteral("abort")});
    QVERIFY(!button()->isEnabled());
    QVERIFY(m_overlay->isVisible());

    emit m_host->cluster.progressFinished();
    QVERIFY(!m_overlay->isVisible());
}

void tst_zoHPCConnectGUIW::nextAttemptCanBeAbortedAgain()
{
    m_overlay->setProgress(QStringLiteral("x"), 40);
    m_overlay->clickedAbort();
    m_overlay->setProgress(QStringLiteral("still the same attempt"), 50);
    QVERIFY(!button()->isEnabled());
    m_overlay->setFinished();

    m_overlay->setProgress(QStringLiteral("the next"), 0);

    QVERIFY(button()->isEnabled());
}

void tst_zoHPCConnectGUIW::setAbortEnabledAbortsWhateverItIsTold_data()
{
    QTest::addColumn<bool>("argument");

    QTest::newRow("true") << true;
    QTest::newRow("false") << false;
}

void tst_zoHPCConnectGUIW::setAbortEnabledAbortsWhateverItIsTold()
{
    QFETCH(bool, argument);

    m_overlay->setAbortEnabled(argument);

    QCOMPARE(m_host->cluster.calls, QStringList{QStringLiteral("abort")});
    QVERIFY(button()->isEnabled());
}

void tst_zoHPCConnectGUIW::cornerPixelIsOutsideTheRoundedRegion()
{
    const QRegion region = zoHPCConnectGUIW::createRoundedRect(QRect(0, 0, 100, 40), 6);

    QVERIFY(!region.contains(QPoint(0, 0)));
    QVERIFY(!region.contains(QPoint(99, 0)));
    QVERIFY(!region.contains(QPoint(0, 39)));
    QVERIFY(!region.contains(QPoint(99, 39)));
    QVERIFY(region.contains(QPoint(50, 0)));
    QVERIFY(region.contains(QPoint(0, 20)));
    QVERIFY(region.contains(QPoint(99, 20)));
    QVERIFY(region.contains(QPoint(50, 39)));
    QCOMPARE(region.boundingRect(), QRect(0, 0, 100, 40));
}

void tst_zoHPCConnectGUIW::roundedRegionFollowsTheFormula()
{
    const QRect rect(10, 20, 100, 40);
    const int r = 6;
    QRegion expected = QRegion(QRect(QPoint(10 + r, 20), QPoint(109 - r, 59)));
    expected += QRegion(QRect(QPoint(10, 20 + r), QPoint(109, 59 - r)));
    expected += QRegion(10, 20, 2 * r, 2 * r, QRegion::Ellipse);
    expected += QRegion(109 - 2 * r + 1, 20, 2 * r, 2 * r, QRegion::Ellipse);
    expected += QRegion(10, 59 - 2 * r + 1, 2 * r, 2 * r, QRegion::Ellipse);
    expected += QRegion(109 - 2 * r + 1, 59 - 2 * r + 1, 2 * r, 2 * r, QRegion::Ellipse);

    QCOMPARE(zoHPCConnectGUIW::createRoundedRect(rect, r), expected);
}

void tst_zoHPCConnectGUIW::paintingSetsTheMask()
{
    m_overlay->resize(300, 100);

    m_overlay->setProgress(QStringLiteral("x"), 40);
    m_overlay->grab();

    QCOMPARE(m_overlay->mask(), zoHPCConnectGUIW::createRoundedRect(m_overlay->rect(), 6));
}

void tst_zoHPCConnectGUIW::plateIsTranslucentBlackWithAGreyEdge()
{
    m_overlay->resize(400, 140);

    const QImage image = m_overlay->grab().toImage().convertToFormat(QImage::Format_ARGB32);

    QCOMPARE(image.size(), m_overlay->size());
    QCOMPARE(QColor::fromRgba(image.pixel(8, 8)), QColor(0, 0, 0, 75));
    QCOMPARE(QColor::fromRgba(image.pixel(image.width() / 2, 0)), QColor(127, 127, 127, 255));
    QCOMPARE(QColor::fromRgba(image.pixel(0, image.height() / 2)), QColor(127, 127, 127, 255));
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
}

void tst_zoHPCConnectGUIW::textIsReadableOnAnyBackground_data()
{
    QTest::addColumn<QColor>("background");

    QTest::newRow("white") << QColor(Qt::white);
    QTest::newRow("grey") << QColor(127, 127, 127);
    QTest::newRow("yellow") << QColor(Qt::yellow);
    QTest::newRow("black") << QColor(Qt::black);
}

void tst_zoHPCConnectGUIW::textIsReadableOnAnyBackground()
{
    QFETCH(QColor, background);
    const auto luminance = [](const QColor& color) {
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    m_overlay->setProgress(QStringLiteral("MMMMMMMM"), 40);

    QImage image(m_overlay->size(), QImage::Format_RGB32);
    image.fill(background);
    m_overlay->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);

    const QRect box(label()->mapTo(m_overlay, QPoint()), label()->size());
    const QColor ground = image.pixelColor(box.center().x(), box.top() + 1);
    double lightest = 0.0;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        for (int x = box.left(); x <= box.right(); ++x)
            lightest = std::max(lightest, luminance(image.pixelColor(x, y)));
    }
    // What guidelines for readable text ask for.
    QVERIFY((lightest + 0.05) / (luminance(ground) + 0.05) >= 7.0);
}

ZO_TEST_MAIN(tst_zoHPCConnectGUIW)
#include "tst_zoHPCConnectGUIW.moc"
