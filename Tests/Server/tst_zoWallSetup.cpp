#include "zoTestCase.h"

#include <zoWallSetup.h>

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>

// What a wall is, on its way between processes.
class tst_zoWallSetup final : public zoTestCase
{
    Q_OBJECT

private slots:
    void everyValueComesBack();
    void largeWallComesBack();
    void emptySetupComesBack();
    void missingValuesHaveDefaults();
    void damagedValueIsNamedAndChangesNothing_data();
    void damagedValueIsNamedAndChangesNothing();
    void nodesArePickedInTheirOrder();
};

namespace
{
zoWallSetup fullSetup()
{
    zoWallViewport viewport;
    viewport.number = 5;
    viewport.area = {0.5, 0.25, 0.5, 0.75};
    viewport.tile = QStringLiteral("Wall row:1 col:2");
    viewport.wall = QStringLiteral("Wall \u00e4\n");
    viewport.plane = {QStringLiteral("p"), {-1.5, 2.25, -1500.125}, {3.0, 4.0, 5.0}, {6.0, 7.0, 0.1}};
    viewport.eye = QStringLiteral("redcyan");
    viewport.eyeSeparation = 64.5;
    viewport.rightEyeOffset = {-3, 4};
    viewport.flipX = true;
    viewport.edges = {1.0, 2.5, 3.0, 4.0};
    viewport.row = 1;
    viewport.column = 2;
    viewport.rows = 3;
    viewport.columns = 4;
    viewport.place = {3.0, 4.5, 5.0, 6.0};
    viewport.neighbours = {QStringLiteral("l"), QStringLiteral("r"), QStringLiteral("a"),
                           QStringLiteral("b")};
    zoWallWindow window;
    window.number = 2;
    window.title = QStringLiteral("n1: window 2");
    window.screen = zoWallWindow::ExtendedDesktop;
    window.fullScreen = true;
    window.geometry = {-10, 20, 1920, 1200};
    window.hardwareSync = true;
    window.place = {1.5, 2.0, 300.0, 200.0};
    window.viewports = {viewport, zoWallViewport()};
    zoWallViewport other;
    other.flipY = true;
    zoWallWindow second;
    second.viewports = {other};
    zoWallSetup setup;
    setup.nodes = {
        {QStringLiteral("n1"), QStringLiteral("n1 1"), QStringLiteral("host"), 1, {window, second}},
        {QStringLiteral("n2"), QStringLiteral("n2"), QStringLiteral("n2"), 0, {}}};
    setup.networks = {{QStringLiteral("Network:/0/"),
                       QStringLiteral("Wall"),
                       0,
                       QStringLiteral("gw"),
                       true,
                       {{QStringLiteral("speed"), QStringLiteral("10g")}},
                       {QStringLiteral("n1"), QStringLiteral("n2")}}};
    setup.walls = {viewport.plane};
    setup.options = {{QStringLiteral("parallelframes"), QStringLiteral("1")}};
    setup.size = {3840, 2160};
    setup.head = {1.0, 2.0, 3.0};
    setup.gamma = 1.8;
    setup.notes = QStringList{QStringLiteral("something")};
    return setup;
}

QByteArray bytesOf(const zoWallSetup& setup)
{
    return QJsonDocument(setup.toJson()).toJson(QJsonDocument::Compact);
}

zoWallSetup throughBytes(const zoWallSetup& setup)
{
    zoWallSetup result;
    QString reason;
    if (!result.fromJson(QJsonDocument::fromJson(bytesOf(setup)).object(), reason))
        qWarning("%s", qUtf8Printable(reason));
    return result;
}
} // namespace

void tst_zoWallSetup::everyValueComesBack()
{
    const zoWallSetup before = fullSetup();

    const zoWallSetup after = throughBytes(before);

    QCOMPARE(bytesOf(after), bytesOf(before));
    QCOMPARE(int(after.nodes.size()), 2);
    QCOMPARE(after.node(QStringLiteral("n1"))->network, 1);
    const zoWallWindow& window = after.nodes[0].windows[0];
    QCOMPARE(window.number, 2);
    QCOMPARE(window.title, QStringLiteral("n1: window 2"));
    QCOMPARE(window.screen, -2);
    QVERIFY(window.fullScreen && window.hardwareSync);
    QCOMPARE(window.geometry, QRect(-10, 20, 1920, 1200));
    QCOMPARE(window.place, QRectF(1.5, 2.0, 300.0, 200.0));
    const zoWallViewport& viewport = window.viewports[0];
    QCOMPARE(viewport.area, QRectF(0.5, 0.25, 0.5, 0.75));
    QCOMPARE(viewport.wall, QStringLiteral("Wall \u00e4\n"));
    QCOMPARE(viewport.plane.lowerLeft.z, -1500.125);
    QCOMPARE(viewport.plane.upperRight.z, 0.1);
    QCOMPARE(viewport.eye, QStringLiteral("redcyan"));
    QCOMPARE(viewport.eyeSeparation, 64.5);
    QCOMPARE(viewport.rightEyeOffset, QPoint(-3, 4));
    QVERIFY(viewport.flipX && !viewport.flipY);
    QVERIFY(after.nodes[0].windows[1].viewports[0].flipY);
    QCOMPARE(viewport.edges.right, 2.5);
    QCOMPARE(viewport.edges.bottom, 4.0);
    QCOMPARE(viewport.columns, 4);
    QCOMPARE(viewport.neighbours.below, QStringLiteral("b"));
    QCOMPARE(after.networks[0].options.value(QStringLiteral("speed")), QStringLiteral("10g"));
    QCOMPARE(after.networks[0].nodes.size(), 2);
    QVERIFY(after.networks[0].encrypted);
    QCOMPARE(viewport.place, QRectF(3.0, 4.5, 5.0, 6.0));
    QCOMPARE(after.options, before.options);
    QCOMPARE(after.walls[0].upperRight.y, 7.0);
    QCOMPARE(after.size, QSize(3840, 2160));
    QCOMPARE(after.head.z, 3.0);
    QCOMPARE(after.gamma, 1.8);
    QCOMPARE(after.notes, QStringList{QStringLiteral("something")});
}

// Windows stand side by side on it, however many they are; each of them may reach from one end of pixels to the other.
void tst_zoWallSetup::largeWallComesBack()
{
    zoWallSetup before = fullSetup();
    before.size = {1000000000, 1200};
    before.nodes[0].windows[0].place = {20000000000.0, 0.0, 2000000.0, 1200.0};
    before.nodes[0].windows[0].viewports[0].place = before.nodes[0].windows[0].place;
    before.nodes[0].windows[0].geometry = {-1000000, -1000000, 2000000, 2000000};

    const zoWallSetup after = throughBytes(before);

    QCOMPARE(after.size, before.size);
    QCOMPARE(after.nodes[0].windows[0].place, before.nodes[0].windows[0].place);
    QCOMPARE(after.nodes[0].windows[0].viewports[0].place, before.nodes[0].windows[0].place);
    QCOMPARE(after.nodes[0].windows[0].geometry, before.nodes[0].windows[0].geometry);
}

void tst_zoWallSetup::emptySetupComesBack()
{
    const zoWallSetup after = throughBytes(zoWallSetup());

    QVERIFY(after.nodes.empty() && after.networks.empty() && after.walls.empty());
    QCOMPARE(bytesOf(after), bytesOf(zoWallSetup()));
}

void tst_zoWallSetup::missingValuesHaveDefaults()
{
    const QJsonObject bare{{QStringLiteral("nodes"),
                            QJsonArray{QJsonObject{{QStringLiteral("windows"),
                                                    QJsonArray{QJsonObject{{QStringLiteral("viewports"),
                                                                            QJsonArray{QJsonObject()}}}}}}}}};
    zoWallSetup setup;
    QString reason;

    QVERIFY2(setup.fromJson(bare, reason), qPrintable(reason));

    const zoWallWindow& window = setup.nodes.at(0).windows.at(0);
    QCOMPARE(window.number, 1);
    QCOMPARE(window.viewports.at(0).eye, QStringLiteral("mono"));
    QCOMPARE(window.viewports.at(0).area, QRectF(0.0, 0.0, 1.0, 1.0));
    QCOMPARE(setup.gamma, 2.2);
}

void tst_zoWallSetup::damagedValueIsNamedAndChangesNothing_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("name");
    const auto row = [](const char* name, const char* from, const char* to, const char* key) {
        QTest::newRow(name) << QByteArray(from) << QByteArray(to) << QString::fromLatin1(key);
    };

    row("network-is-text", R"("networks":[)", R"("networks":["n",)", "networks");
    row("window-is-number", R"("windows":[])", R"("windows":7)", "windows");
    row("geometry-with-three", "[-10,20,1920,1200]", "[-10,20,1920]", "geometry");
    row("geometry-of-text", "[-10,20,1920,1200]", R"(["a",20,1920,1200])", "geometry");
    row("too-far", "[-10,20,1920,1200]", "[-10,2000001,1920,1200]", "geometry");
    row("screen-too-large", R"("screen":-2)", R"("screen":1e99)", "screen");
    row("eye-is-number", R"("eye":"redcyan")", R"("eye":1)", "eye");
    row("flip-is-text", R"("flipX":true)", R"("flipX":"true")", "flipX");
    row("gamma-of-text", R"("gamma":1.8)", R"("gamma":"1.8")", "gamma");
}

void tst_zoWallSetup::damagedValueIsNamedAndChangesNothing()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QString, name);
    QByteArray text = bytesOf(fullSetup());
    QVERIFY2(text.contains(from), text.constData());
    text.replace(text.indexOf(from), from.size(), to);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    QCOMPARE(error.errorString(), QStringLiteral("no error occurred"));
    zoWallSetup setup;
    setup.size = {1, 2};
    QString reason;

    QVERIFY(!setup.fromJson(document.object(), reason));

    QCOMPARE(reason, QStringLiteral("\"%1\" has no proper value").arg(name));
    QCOMPARE(setup.size, QSize(1, 2));
    QVERIFY(setup.nodes.empty());
}

void tst_zoWallSetup::nodesArePickedInTheirOrder()
{
    const zoWallSetup setup = fullSetup();

    const zoWallSetup both = setup.ofNodes({QStringLiteral("n2"), QStringLiteral("?"), QStringLiteral("n1")});
    const zoWallSetup none = setup.ofNodes({});

    QCOMPARE(int(both.nodes.size()), 2);
    QCOMPARE(both.nodes[0].id, QStringLiteral("n2"));
    QCOMPARE(both.nodes[1].windows.size(), setup.nodes[0].windows.size());
    QVERIFY(none.nodes.empty());
    QCOMPARE(none.size, setup.size);
    QCOMPARE(none.walls.size(), setup.walls.size());
    QVERIFY(setup.node(QStringLiteral("?")) == nullptr);
}

ZO_TEST_MAIN(tst_zoWallSetup)
#include "tst_zoWallSetup.moc"
