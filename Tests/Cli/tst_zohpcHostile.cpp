#include "zoCliFiles.h"
#include "zoHostileText.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QProcess>
#include <QTest>

using namespace zoHostileText;

// A mebibyte of anything ends by itself, within a gibibyte of memory. The time limit here is that of the test
// run: what grows with the square of its input takes minutes.
class tst_zohpcHostile final : public zoTestCase
{
    Q_OBJECT

private slots:
    void commandEnds_data();
    void commandEnds();
    void otherItemsAreCompared_data();
    void otherItemsAreCompared();
    void comparisonEnds_data();
    void comparisonEnds();
    void largestWallIsWritten_data();
    void largestWallIsWritten();
    void documentsFollowEachOther_data();
    void documentsFollowEachOther();

private:
    void addDocuments(const QByteArray& name, const QStringList& command) const;
    void addTopologies() const;
    void addLegacy() const;
    void addPictures() const;
    void addValues() const;
    void addChanges() const;
    void addReports() const;

    const zoCliFiles m_files;
};

void tst_zohpcHostile::commandEnds_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QByteArray>("input");

    const QStringList expand{"hosts", "expand"};
    const QStringList fold{"hosts", "fold"};
    const QStringList brackets{"hosts", "fold", "-b", "--names"};
    const QStringList tree{"hosts", "tree", "--json"};
    QTest::newRow("words-that-are-no-names") << expand << filled("_ ");
    QTest::newRow("ranges-from-brackets-that-fill-nothing") << expand << filled("n[1-2] - m1 ");
    QTest::newRow("blocks-that-are-no-ranges") << expand << filled("n[1x] ");
    QTest::newRow("brackets-that-open") << expand << filled("[");
    QTest::newRow("moved-networks-inside-each-other") << expand << filled("h[forwards=");
    QTest::newRow("ranges") << expand << numbered([](const QByteArray& i) {
        return 'n' + i + "x0 - n" + i + "x9999\n";
    });
    QTest::newRow("largest-bracket") << tree << QByteArray("n[1-1000000]");
    QTest::newRow("grid-of-brackets") << brackets << QByteArray("n[1-1000]m[1-1000]");
    QTest::newRow("long-name-of-many") << fold << QByteArray(Size, 'n') + "[1-1000000]";
    QTest::newRow("one-name-of-many-numbers") << brackets << filled("a1");
    QTest::newRow("names-of-many-numbers") << brackets << numbered([](const QByteArray& i) {
        return QByteArray("a1").repeated(13) + 'b' + i + 'c' + i + '0' + ' ';
    });
    QTest::newRow("braces") << tree << filled("{}");
    QTest::newRow("deep-braces") << tree << QByteArray("{a").repeated(5000) + QByteArray(" a").repeated(2000);
    QTest::newRow("gateways") << fold << filled("gw{a}");
    QTest::newRow("option-block") << expand << "h[" + filled("rt=1,");

    addPictures();
    addValues();
    addChanges();
    addReports();
    const QString empty = m_files.write("empty.zhpc", "<cluster version='1'/>");
    addDocuments("check", {"check", "-"});
    addDocuments("format", {"format", "-"});
    addDocuments("draw", {"draw", "-", "-o", "-"});
    addDocuments("diff", {"diff", "-", empty});
    addDocuments("export-equalizer", {"export", "-", "--equalizer", "-"});
    addDocuments("export-paraview", {"export", "-", "--paraview", "-"});
    addDocuments("report", {"report", "-", "-o", "-"});
    addDocuments("topology", {"topology", "-"});
    addTopologies();
    addLegacy();
}

void tst_zohpcHostile::addDocuments(const QByteArray& name, const QStringList& command) const
{
    const auto row = [&](const char* input, const QByteArray& text) {
        QTest::newRow((name + '-' + input).constData()) << command << text;
    };
    row("attributes",
        document("<node" + numbered([](const QByteArray& i) { return " a" + i + "=''"; }) + "/>"));
    row("attributes-unclosed", "<a" + numbered([](const QByteArray& i) { return " a" + i + "=''"; }));
    row("nodes-of-one-name", document(filled("<node/>")));
    row("deep", document(QByteArray("<node><network>").repeated(5000)));
    row("deep-and-closed", document(QByteArray("<node><network>").repeated(5000) +
                                    QByteArray("</network></node>").repeated(5000)));
    row("declarations", "<!DOCTYPE a [" + numbered([](const QByteArray& i) {
                            return "<!ENTITY e" + i + " \"x\">";
                        }) + "]><a/>");
    row("references",
        "<!DOCTYPE a [<!ENTITY e \"" + QByteArray(4096, 'x') + "\">]><a>" + filled("&e;") + "</a>");
    row("declared-attributes", "<!DOCTYPE a [" + numbered([](const QByteArray& i) {
                                   return "<!ATTLIST a b" + i + " CDATA \"x\">";
                               }) + "]><a/>");
    row("text", "<a>" + QByteArray(Size, 'x') + "</a>");
    row("planes-at-one-place",
        document(QByteArray(), filled("<projection type='plane' edgeblending='true' leftedge='1' x2='9'/>")));
    row("planes-far-away",
        document(QByteArray(), filled("<projection type='plane' edgeblending='true' leftedge='1' x1='-1e20' "
                                      "x2='1e20' x3='1e20' y3='1e20'/>")));
    row("planes-with-names", document(QByteArray(), numbered([](const QByteArray& i) {
                                          return "<projection name='P" + i + "' type='plane' x1='" + i +
                                                 "' x2='" + i + "1' x3='" + i + "1' y3='9'/>";
                                      })));
    // Each as large as one may be: what a document holds of them is limited, too.
    row("walls-of-many-tiles",
        document(QByteArray(), filled("<projection type='wall' rows='100' columns='1000'/>")));
    row("windows-at-one-place",
        document("<node name='a'/>", "<display>" +
                                         filled("<window node='a'><viewport projection='P'/></window>") +
                                         "</display>"));
}

// Gateways as ClusterShell has them.
void tst_zohpcHostile::addTopologies() const
{
    const auto row = [](const char* input, const QByteArray& text) {
        QTest::newRow((QByteArray("topology-read-") + input).constData())
            << QStringList{"topology", "--read", "-"} << "[routes]\n" + text;
    };
    row("routes-side-by-side", numbered([](const QByteArray& i) { return "gw: n" + i + '\n'; }));
    row("routes-behind-each-other", numbered([](const QByteArray& i) {
            return 'n' + i + ": n" + QByteArray::number(i.toInt() + 1) + '\n';
        }));
    row("routes-of-many", "a: g[1-100000]\ng[1-100000]: n[1-100000]\n");
    row("lines-that-are-no-routes", filled("x\n"));
}

void tst_zohpcHostile::addLegacy() const
{
    const auto parameter = [](const QByteArray& key) { return "<key name=\"" + key + "\">"; };
    const auto row = [](const char* input, const QByteArray& text) {
        QTest::newRow((QByteArray("convert-") + input).constData())
            << QStringList{"convert", "-"} << "<config>" + text + "</config>";
    };
    row("parameters", numbered([&](const QByteArray& i) { return parameter("p" + i) + "x</key>"; }));
    row("parameters-of-one-name", filled(parameter("zoClusterHosts") + "n1</key>"));
    row("nested-parameters", filled(parameter("p")));
    const QByteArray wall =
        parameter("zoClusterProjectionType") + "Powerwall</key>" + parameter("zoClusterPWServers");
    row("hosts-of-a-wall",
        wall + numbered([](const QByteArray& i) { return 'n' + i + "[xpos=" + i + ",ypos=0] "; }) + "</key>");
    row("equal-hosts-of-a-wall", wall + filled("n ") + "</key>");
    row("pipes", numbered([&](const QByteArray& i) {
            return parameter("zoClusterPipe" + i) + "\"n" + i + "\" 0 0 9 9 plane 0 0 0 9 9 0 " + i +
                   " 0 0 1 0 0 0 1 0</key>";
        }));
    row("old-hosts", parameter("zoClusterHosts") + numbered([](const QByteArray& i) {
                         return "\"n" + i + "\" 0 0 9 9 0 0 1 1 " + i + " 0 0 1 0 0 0 1 0,";
                     }) + "</key>");
    row("value-in-base64", "<key type=\"QString\" name=\"zoClusterServers\">" + filled("bjEg") + "</key>");
}

// More than a picture has room for.
void tst_zohpcHostile::addPictures() const
{
    const QStringList draw{"draw", "-", "-o", "-"};
    QTest::newRow("draw-walls-of-few-tiles")
        << draw << document({}, numbered([](const QByteArray& i) {
                                return "<projection name='W" + i +
                                       "' type='wall' rows='2' columns='5' distance='1'/>";
                            }));
    QTest::newRow("draw-nodes-of-one-name")
        << draw + QStringList{"--picture", "network"} << document(filled("<node/>"));
    QTest::newRow("draw-networks") << draw + QStringList{"--picture", "network"}
                                   << document("</network>" + filled("<network/>") + "<network>");
    QByteArray nodes;
    QByteArray planes;
    QByteArray windows;
    for (int n = 0; nodes.size() + planes.size() + windows.size() < Size; ++n) {
        const QByteArray i = QByteArray::number(n);
        nodes += "<node name='n" + i + "'/>";
        planes += "<projection name='P" + i + "' type='plane' x1='" + i + "0' x2='" + i + "9' x3='" + i +
                  "9' y3='9'/>";
        windows += "<window node='n" + i + "' screen='0' width='9' height='9'><viewport projection='P" + i +
                   "' x2='1' y2='1'/></window>";
    }
    QTest::newRow("draw-screens-of-many-nodes")
        << draw + QStringList{"--picture", "screens"}
        << document(nodes, planes + "<display>" + windows + "</display>");
}

// An object of JSON that is built value by value is moved for each of them.
void tst_zohpcHostile::addValues() const
{
    QTest::newRow("format-blended-tiles")
        << QStringList{"format", "-"}
        << document({}, "<projection name='W' rows='100' columns='1000' width='9000' height='900' "
                        "edgeblending='true' type='powerwall' distance='1'/>");
    const QByteArray tiles =
        document({}, "<projection name='W' rows='1000' columns='100' width='9000' height='900' "
                     "edgeblending='true' type='powerwall' distance='1'/>");
    const QByteArray walls = document({}, numbered([](const QByteArray& i) {
                                          return "<projection name='W" + i +
                                                 "' type='powerwall' rows='2' columns='4' width='9' "
                                                 "height='9' distance='1' edgeblending='true'/>";
                                      }));
    QTest::newRow("get-blended-tiles") << QStringList{"get", "-"} << tiles;
    QTest::newRow("get-json-blended-walls") << QStringList{"get", "--defaults", "--json", "-"} << walls;
    QTest::newRow("set-blended-tiles") << QStringList{"set", "--force", "-", "cluster/booking=a"} << tiles;
    const QString other = m_files.write("walls.zhpc", walls);
    QTest::newRow("merge-blended-walls") << QStringList{"merge", other, "-", other} << walls;
    const QString tiled = m_files.write("tiles.zhpc", tiles);
    QTest::newRow("merge-blended-tiles") << QStringList{"merge", tiled, "-", tiled} << tiles;
    // These two fall by the time alone: all tiles once for each of the files that are read.
    const QByteArray small =
        document({}, numbered([](const QByteArray& i) {
                     return "<projection name='W" + i + "' type='wall' rows='2' columns='5' distance='1'/>";
                 }));
    const QString smallWalls = m_files.write("small.zhpc", small);
    QTest::newRow("set-walls-of-few-tiles")
        << QStringList{"set", "--force", "-", "cluster/booking=a"} << small;
    QTest::newRow("merge-walls-of-few-tiles") << QStringList{"merge", smallWalls, "-", smallWalls} << small;
    for (const char* format : {"--defaults", "--json"})
        QTest::newRow((QByteArray("get") + format).constData())
            << QStringList{"get", format, "-"} << document(filled("<node/>"));
}

// A new name goes to all that used the old one, once for all; a wall's name is in those of its tiles.
void tst_zohpcHostile::addChanges() const
{
    const auto set = [](const char* change) {
        return QStringList{"set", "--force", "-", QString::fromLatin1(change)};
    };
    const QByteArray tiles = " type='wall' rows='30' columns='30'/>";
    QByteArray planes;
    QByteArray windows;
    QByteArray nodes;
    for (int n = 0; nodes.size() + planes.size() + windows.size() < Size; ++n) {
        const QByteArray i = QByteArray::number(n);
        nodes += "<node name='n" + i + "'/>";
        planes += "<projection name='P" + i + "' type='plane' x2='9' x3='9' y3='9'/>";
        windows += "<window node='n" + i + "'><viewport projection='P" + i + "'/></window>";
    }
    const QByteArray wall = document(nodes, planes + "<display>" + windows + "</display>");
    QTest::newRow("set-names-of-nodes") << set("node[*]/name=a") << wall;
    QTest::newRow("set-names-of-projections") << set("projection[*]/name=P") << wall;
    QTest::newRow("set-to-no-projection") << set("display[1]/window[*]/viewport[*]/projection=P") << wall;
    QTest::newRow("set-nodes-of-one-name") << set("node[*]/name=a") << document(filled("<node/>"));
    QTest::newRow("set-deep") << set("node[*]/enabled=false")
                              << document(QByteArray("<node><network>").repeated(5000) +
                                          QByteArray("</network></node>").repeated(5000));
    // Falls by the time alone: the paths of all nodes once for each change.
    QStringList changes{"set", "--force", "-"};
    QByteArray named;
    for (int i = 0; i < 8000; ++i) {
        const QByteArray number = QByteArray::number(i);
        named += "<node name='n" + number + "'/>";
        changes << QString::fromLatin1(i % 2 == 0 ? "node[n" + number + "]/enabled=false"
                                                  : "node[n" + number + "]/name=m" + number);
    }
    QTest::newRow("set-thousands-of-changes") << changes << document(named);
    for (const char* command : {"check", "format", "get", "describe"})
        QTest::newRow((QByteArray(command) + "-tiles-with-a-long-name").constData())
            << QStringList{command, "-"}
            << document({}, "<projection name='" + QByteArray(Size, 'n') + '\'' + tiles);
    QTest::newRow("check-many-tiles-with-long-names")
        << QStringList{"check", "-"}
        << document({}, ("<projection name='" + QByteArray(Size / 60, 'n') + '\'' + tiles).repeated(60));
}

// More than sheets of paper are good for.
void tst_zohpcHostile::addReports() const
{
    const QStringList report{"report", "-", "-o", "-"};
    QTest::newRow("report-nodes-of-one-name") << report << document(filled("<node/>"));
    QTest::newRow("report-networks") << report << document("</network>" + filled("<network/>") + "<network>");
    QTest::newRow("report-elements-nobody-knows") << report << "<cluster>" + filled("<x/>") + "</cluster>";
    // These two fall by the time alone: all windows once for each of them, and a word once for each of its lines.
    QTest::newRow("report-windows-of-one-wall")
        << report
        << document("<node name='a'/>",
                    "<projection name='P' type='wall' rows='100' columns='100' distance='1'/><display>" +
                        filled("<window node='a'><viewport projection='P'/></window>") + "</display>");
    QTest::newRow("report-long-name") << report
                                      << document({}, "<projection name='" + QByteArray(Size, 'n') +
                                                          "' type='wall' rows='3' columns='3'/>");
}

// Each item is only in one of both.
void tst_zohpcHostile::otherItemsAreCompared_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");

    const auto windows = [](const QByteArray& node) {
        return document("<node name='a'/><node name='b'/>", "<display>" + numbered([&](const QByteArray& i) {
                                                                return "<window node='" + node +
                                                                       "' screen='" + i + "'/>";
                                                            }) + "</display>");
    };
    QTest::newRow("windows") << windows("a") << windows("b");
    const auto projections = [](const QByteArray& name, const QByteArray& sign) {
        return document(QByteArray(), numbered([&](const QByteArray& i) {
                            return "<projection name='" + name + i + "' type='plane' x1='" + sign + i + "'/>";
                        }));
    };
    QTest::newRow("projections") << projections("a", "") << projections("b", "-");
    const auto networks = [](const QByteArray& between) {
        return document(numbered([&](const QByteArray& i) { return "<node name='" + i + "'/>" + between; }));
    };
    QTest::newRow("nodes-in-networks-of-their-own") << networks({}) << networks("</network><network>");
}

void tst_zohpcHostile::otherItemsAreCompared()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    zoCliFiles files;

    const zoCommandRun run =
        zoCommandRun::zohpc({"diff", files.write("before.zhpc", before), files.write("after.zhpc", after)});

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.output.count('\n') > 5000);
}

void tst_zohpcHostile::comparisonEnds_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");

    const auto tiles = [](const QByteArray& distance) {
        return document({}, "<projection name='W' rows='100' columns='1000' width='9000' height='900' "
                            "edgeblending='true' type='powerwall' distance='" +
                                distance + "'/>");
    };
    QTest::newRow("tiles") << tiles("1") << tiles("2");
    const auto tree = [](int depth) {
        QByteArray gateways;
        for (int i = 0; i < depth; ++i)
            gateways += "<node name='g" + QByteArray::number(i) + "'><network>";
        return document(gateways + QByteArray("</network></node>").repeated(depth));
    };
    QTest::newRow("deep") << tree(5000) << tree(4000);
}

void tst_zohpcHostile::comparisonEnds()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the sanitizer takes more address space than the limit leaves");
#endif

    const zoCommandRun run =
        runLimited({"diff", m_files.write("before.zhpc", before), m_files.write("after.zhpc", after)}, {});

    QVERIFY2(run.exitCode == 1, run.errors.right(500).constData());
    QVERIFY(!run.output.isEmpty());
}

// As many windows as a new wall may have, and as many hosts.
void tst_zohpcHostile::largestWallIsWritten_data()
{
    QTest::addColumn<QStringList>("wall");
    QTest::addColumn<int>("windows");

    QTest::newRow("small") << QStringList{"--wall", "2x2"} << 4;
    QTest::newRow("planes") << QStringList{"--curved", "200x100", "--tile-size", "10x10", "--radius", "9000"}
                            << 20000;
}

void tst_zohpcHostile::largestWallIsWritten()
{
    QFETCH(QStringList, wall);
    QFETCH(int, windows);
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the sanitizer takes more address space than the limit leaves");
#endif
    const zoCliFiles files;
    const QString output = files.path("wall.zhpc");

    const zoCommandRun run =
        runLimited(QStringList{"new"} + wall + QStringList{"--hosts", "n[1-1000000]", "-o", output}, {});

    // Some of the walls are odd ones.
    QVERIFY2(run.exitCode == 0 || run.exitCode == 1, run.errors.right(500).constData());
    const QByteArray written = zoCliFiles::read(output);
    QCOMPARE(written.count("<node "), 1000000);
    QCOMPARE(written.count("<window "), windows);
}

// What was read goes before the next document comes; together they would need a fifth more, and an import twice as much.
void tst_zohpcHostile::documentsFollowEachOther_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<int>("mebibytes");

    QTest::newRow("set") << QStringList{"set", "-", "node[*]/name=a"} << document(filled("<node/>")) << 525;
    QTest::newRow("new") << QStringList{"new",          "--curved", "200x100", "--tile-size",
                                        "10x10",        "--radius", "9000",    "--hosts",
                                        "n[1-1000000]", "-o",       "-"}
                         << QByteArray() << 900;
    QTest::newRow("convert") << QStringList{"convert", "-"}
                             << "<config><key name=\"zoClusterProjectionType\">Powerwall</key>"
                                "<key name=\"zoClusterPWServers\">" +
                                    filled("n ") + "</key></config>"
                             << 400;
}

void tst_zohpcHostile::documentsFollowEachOther()
{
    QFETCH(QStringList, command);
    QFETCH(QByteArray, input);
    QFETCH(int, mebibytes);
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the sanitizer takes more address space than the limit leaves");
#endif
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    mebibytes = 1024; // documents of Qt 6 are larger
#endif

    const zoCommandRun run = runLimited(command, input, mebibytes);

    QVERIFY2(run.exitCode == 0 || run.exitCode == 1, run.errors.right(500).constData());
    QVERIFY(run.output.size() > zoHostileText::Size);
}

void tst_zohpcHostile::commandEnds()
{
    QFETCH(QStringList, command);
    QFETCH(QByteArray, input);
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the sanitizer takes more address space than the limit leaves");
#endif

    const zoCommandRun run = runLimited(command, input);

    // Fine, with problems, or refused; not killed, and not out of memory.
    QVERIFY2(run.exitCode >= 0 && run.exitCode <= 2, run.errors.right(500).constData());
    QVERIFY(!run.errors.contains("bad_alloc"));
}

ZO_TEST_MAIN(tst_zohpcHostile)
#include "tst_zohpcHostile.moc"
