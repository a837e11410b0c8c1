#include "zoHostileInputs.h"

#include <algorithm>

namespace
{
using Text = std::function<QByteArray(int)>;

// The text as often as it fits.
Text filled(const QByteArray& text)
{
    return [text](int size) { return text.repeated(size / text.size()); };
}

// One after the other, numbered.
Text numbered(const std::function<QByteArray(const QByteArray&)>& part)
{
    return [part](int size) {
        QByteArray text;
        for (int i = 0; text.size() < size; ++i)
            text += part(QByteArray::number(i));
        return text;
    };
}

Text between(const QByteArray& before, const Text& text, const QByteArray& after)
{
    return [=](int size) { return before + text(size) + after; };
}

// So many times in a mebibyte, and in proportion in less.
Text counted(int perMebibyte, const std::function<QByteArray(int)>& text)
{
    return [=](int size) {
        return text(std::max(1, int(qint64(perMebibyte) * size / zoHostileInput::Mebibyte)));
    };
}

Text ofHosts(const Text& nodes)
{
    return between("<cluster version=\"1\"><master><network>", nodes, "</network></master></cluster>");
}

Text ofDisplays(const Text& displays)
{
    return between("<cluster version=\"1\"><master><network><node name='a'/></network></master>", displays,
                   "</cluster>");
}

Text ofWindows(const Text& windows)
{
    return ofDisplays(between("<display>", windows, "</display>"));
}

class Table
{
public:
    // Each hosts text, each configuration and so on, read by the command.
    void addHosts(const QByteArray& name, const QStringList& command);
    void addDocuments(const QByteArray& name, const QStringList& command);
    void addLegacy(const QByteArray& name, const QStringList& command);
    void addTopologies(const QByteArray& name, const QStringList& command);
    void addSurveys(const QByteArray& name, const QStringList& command);
    void addChanges();

    std::vector<zoHostileInput> rows;

private:
    void add(const QByteArray& name, const QStringList& command, const Text& text)
    {
        rows.push_back({name, command, text, {}});
    }
};

void Table::addHosts(const QByteArray& name, const QStringList& command)
{
    const auto row = [&](const char* input, const Text& text) { add(name + '-' + input, command, text); };
    row("words-that-are-no-names", filled("_ "));
    row("words-that-lose-characters", filled("a_ "));
    row("ranges-from-brackets-that-fill-nothing", filled("n[1-2] - m1 "));
    row("blocks-that-are-no-ranges", filled("n[1x] "));
    row("brackets-that-open", filled("["));
    row("moved-networks-inside-each-other", filled("h[forwards="));
    row("ranges", numbered([](const QByteArray& i) { return 'n' + i + "x0 - n" + i + "x9999\n"; }));
    row("largest-bracket",
        counted(1000000, [](int count) { return "n[1-" + QByteArray::number(count) + ']'; }));
    row("grid-of-brackets", counted(1000000, [](int count) {
            return "n[1-1000]m[1-" + QByteArray::number(std::max(1, count / 1000)) + ']';
        }));
    row("long-name-of-many", [](int size) { return QByteArray(size, 'n') + "[1-1000000]"; });
    row("numbers-of-one-bracket", between("n[", numbered([](const QByteArray& i) { return i + ','; }), "0]"));
    row("names", numbered([](const QByteArray& i) { return 'n' + i + ' '; }));
    row("names-backwards", counted(100000, [](int count) {
            QByteArray text;
            while (count-- > 0)
                text += 'n' + QByteArray::number(count) + ' ';
            return text;
        }));
    row("names-of-one", filled("n "));
    row("one-name-of-many-numbers", filled("a1"));
    row("names-of-many-numbers", numbered([](const QByteArray& i) {
            return QByteArray("a1").repeated(13) + 'b' + i + 'c' + i + '0' + ' ';
        }));
    row("braces", filled("{}"));
    row("deep-braces", counted(5000, [](int count) {
            return QByteArray("{a").repeated(count) + QByteArray(" a").repeated(2000);
        }));
    row("deep-gateways", counted(5000, [](int count) {
            QByteArray text;
            for (int i = 0; i < count; ++i)
                text += 'g' + QByteArray::number(i) + '{';
            return text + 'n' + QByteArray(count, '}');
        }));
    row("gateways", filled("gw{a}"));
    row("option-block", between("h[", filled("rt=1,"), QByteArray()));
}

void Table::addDocuments(const QByteArray& name, const QStringList& command)
{
    const auto row = [&](const char* input, const Text& text) { add(name + '-' + input, command, text); };
    row("attributes",
        ofHosts(between("<node", numbered([](const QByteArray& i) { return " a" + i + "=''"; }), "/>")));
    row("attributes-unclosed",
        between("<a", numbered([](const QByteArray& i) { return " a" + i + "=''"; }), ""));
    row("nodes-of-one-name", ofHosts(filled("<node/>")));
    row("nodes", ofHosts(numbered([](const QByteArray& i) { return "<node name='n" + i + "'/>"; })));
    row("networks", between("<cluster version='1'><master>", filled("<network/>"), "</master></cluster>"));
    row("deep",
        ofHosts(counted(5000, [](int count) { return QByteArray("<node><network>").repeated(count); })));
    row("deep-and-closed", ofHosts(counted(5000, [](int count) {
            return QByteArray("<node><network>").repeated(count) +
                   QByteArray("</network></node>").repeated(count);
        })));
    row("deep-gateways", ofHosts(counted(5000, [](int count) {
            QByteArray gateways;
            for (int i = 0; i < count; ++i)
                gateways += "<node name='g" + QByteArray::number(i) + "'><network>";
            return gateways + QByteArray("</network></node>").repeated(count);
        })));
    row("declarations",
        between("<!DOCTYPE a [", numbered([](const QByteArray& i) { return "<!ENTITY e" + i + " \"x\">"; }),
                "]><a/>"));
    row("references",
        between("<!DOCTYPE a [<!ENTITY e \"" + QByteArray(4096, 'x') + "\">]><a>", filled("&e;"), "</a>"));
    row("declared-attributes", between("<!DOCTYPE a [", numbered([](const QByteArray& i) {
                                           return "<!ATTLIST a b" + i + " CDATA \"x\">";
                                       }),
                                       "]><a/>"));
    row("text", between("<a>", filled("x"), "</a>"));
    row("unknown-elements", between("<cluster version='1'>", filled("<x/>"), "</cluster>"));
    row("planes-at-one-place",
        ofDisplays(filled("<projection type='plane' edgeblending='true' leftedge='1' x2='9'/>")));
    row("planes", ofDisplays(numbered([](const QByteArray& i) {
            return "<projection name='P" + i + "' type='plane' edgeblending='true' leftedge='0.1' x1='" + i +
                   "' x2='" + i + "1' x3='" + i + "1' y3='9'/>";
        })));
    row("planes-far-away",
        ofDisplays(filled("<projection type='plane' edgeblending='true' leftedge='1' x1='-1e20' "
                          "x2='1e20' x3='1e20' y3='1e20'/>")));
    row("walls", ofDisplays(numbered([](const QByteArray& i) {
            return "<projection name='W" + i + "' type='wall' rows='2' columns='5' distance='1'/>";
        })));
    row("blended-walls", ofDisplays(numbered([](const QByteArray& i) {
            return "<projection name='W" + i +
                   "' type='powerwall' rows='2' columns='4' width='9' height='9' distance='1' "
                   "edgeblending='true'/>";
        })));
    row("blended-tiles", counted(1000, [](int count) {
            return "<cluster version='1'><projection name='W' type='powerwall' rows='" +
                   QByteArray::number(count) +
                   "' columns='100' width='9000' height='900' distance='1' edgeblending='true'/></cluster>";
        }));
    row("name-of-tiles", [](int size) {
        return "<cluster version='1'><projection name='" + QByteArray(size, 'n') +
               "' type='wall' rows='3' columns='3'/></cluster>";
    });
    row("walls-of-many-tiles", ofDisplays(filled("<projection type='wall' rows='100' columns='1000'/>")));
    row("windows-at-one-place", ofWindows(filled("<window node='a'><viewport projection='P'/></window>")));
    row("windows", ofWindows(numbered([](const QByteArray& i) {
            return "<window node='a' x='" + i + "0' width='9' height='9'><viewport x2='1' y2='1'/></window>";
        })));
    row("displays", ofDisplays(filled("<display/>")));
    // Of what is shown: a plane, a host and a window for each picture.
    row("pictures", [](int size) {
        QByteArray nodes;
        QByteArray planes;
        QByteArray windows;
        for (int n = 0; nodes.size() + planes.size() + windows.size() < size; ++n) {
            const QByteArray i = QByteArray::number(n);
            nodes += "<node name='n" + i + "'/>";
            planes += "<projection name='P" + i + "' type='plane' x1='" + i + "0' x2='" + i + "9' x3='" + i +
                      "9' y3='9'/>";
            windows += "<window node='n" + i + "' screen='0' width='9' height='9'><viewport projection='P" +
                       i + "' x2='1' y2='1'/></window>";
        }
        return "<cluster version='1'><master><network>" + nodes + "</network></master>" + planes +
               "<display>" + windows + "</display></cluster>";
    });
}

void Table::addLegacy(const QByteArray& name, const QStringList& command)
{
    const auto parameter = [](const QByteArray& key) { return "<key name=\"" + key + "\">"; };
    const auto row = [&](const char* input, const Text& text) {
        add(name + '-' + input, command, between("<config>", text, "</config>"));
    };
    row("parameters", numbered([=](const QByteArray& i) { return parameter("p" + i) + "x</key>"; }));
    row("parameters-of-one-name", filled(parameter("zoClusterHosts") + "n1</key>"));
    row("nested-parameters", filled(parameter("p")));
    const QByteArray wall = parameter("zoClusterProjectionType") + "Powerwall</key>";
    row("hosts-of-a-wall", between(wall + parameter("zoClusterPWServers"), numbered([](const QByteArray& i) {
                                       return 'n' + i + "[xpos=" + i + ",ypos=0] ";
                                   }),
                                   "</key>"));
    row("equal-hosts-of-a-wall", between(wall + parameter("zoClusterPWServers"), filled("n "), "</key>"));
    row("pipes", numbered([=](const QByteArray& i) {
            return parameter("zoClusterPipe" + i) + "\"n" + i + "\" 0 0 9 9 plane 0 0 0 9 9 0 " + i +
                   " 0 0 1 0 0 0 1 0</key>";
        }));
    row("old-hosts", between(parameter("zoClusterHosts"), numbered([](const QByteArray& i) {
                                 return "\"n" + i + "\" 0 0 9 9 0 0 1 1 " + i + " 0 0 1 0 0 0 1 0,";
                             }),
                             "</key>"));
    row("value-in-base64",
        between("<key type=\"QString\" name=\"zoClusterServers\">", filled("bjEg"), "</key>"));
}

// Gateways as ClusterShell has them.
void Table::addTopologies(const QByteArray& name, const QStringList& command)
{
    const auto row = [&](const char* input, const Text& text) {
        add(name + '-' + input, command, between("[routes]\n", text, QByteArray()));
    };
    row("routes-side-by-side", numbered([](const QByteArray& i) { return "gw: n" + i + '\n'; }));
    row("routes-behind-each-other", numbered([](const QByteArray& i) {
            return 'n' + i + ": n" + QByteArray::number(i.toInt() + 1) + '\n';
        }));
    row("routes-of-many", counted(100000, [](int count) {
            const QByteArray last = QByteArray::number(count);
            return "a: g[1-" + last + "]\ng[1-" + last + "]: n[1-" + last + "]\n";
        }));
    row("comments", filled("# a\n"));
    row("lines-that-are-no-routes", filled("x\n"));
}

// Measurements of rooms, as many of each kind as there may be.
void Table::addSurveys(const QByteArray& name, const QStringList& command)
{
    const QByteArray front = "wall Front size 3000 x 2000\nupright Front\nfloor Front.bottom 500\n"
                             "viewer distance 1500 height 1500\nwall W0 size 9 x 9\npoint P0\n";
    const auto row = [&](const char* input, const Text& text) { add(name + '-' + input, command, text); };
    // Each time "#" is the next number from 1, and "@" the one before.
    const auto lines = [&](const char* input, int most, const QByteArray& line) {
        row(input, between(front,
                           counted(most,
                                   [line](int count) {
                                       QByteArray text;
                                       for (int i = 0; i < count; ++i)
                                           text += QByteArray(line)
                                                       .replace('@', QByteArray::number(i))
                                                       .replace('#', QByteArray::number(i + 1));
                                       return text;
                                   }),
                           {}));
    };
    row("lines-that-begin-with-nothing-known", filled("x\n"));
    row("comments", filled("# a\n"));
    row("one-word", filled("x"));
    row("one-line", between("wall A size 9 x 9\nupright", filled(" A"), "\n"));
    lines("loose-walls", 1998, "wall W# size 1 x 1\n");
    lines("walls-behind-each-other", 1500, "wall W# size 900 x 900\njoin W@.right W#.left\n");
    lines("walls-of-one-wall", 1500,
          "wall W# size 900 x 2000\njoin Front.right W#.left\nangle Front W# 90\n");
    lines("walls-of-tiles", 1998, "wall W# size 9000 x 9000 tiles 100 x 100\n");
    lines("one-distance", 15000, "distance Front.ll Front.ur 3605\n");
    lines("distances-to-points", 5000,
          "point P#\ndistance Front.ll P# 4000\ndistance Front.lr P# 4100\ndistance Front.ul P# 4200\n");
    lines("distances-from-point-to-point", 5000,
          "point P#\ndistance P@ P# 40\ndistance Front.lr P# 4100\ndistance Front.ul P# 4200\n");
    lines("points-of-one-corner", 18000, "point P# 1 2 3\nmark P# Front.ll\n");
    lines("points-that-are-not-used", 20000, "point P# 1 2 3\n");
}

// Thousands of changes at once, of so many nodes.
void Table::addChanges()
{
    const auto row = [&](const char* name, const std::function<QString(int)>& change) {
        const Text nodes = ofHosts(counted(8000, [](int count) {
            QByteArray text;
            for (int i = 0; i < count; ++i)
                text += "<node name='n" + QByteArray::number(i) + "'/>";
            return text;
        }));
        rows.push_back({name, {"set", "--force", "-"}, nodes, [change](int size) {
                            QStringList changes;
                            const int count =
                                std::max(1, int(qint64(8000) * size / zoHostileInput::Mebibyte));
                            for (int i = 0; i < count; ++i)
                                changes << change(i);
                            return changes;
                        }});
    };
    row("set-changes-of-many", [](int i) { return QStringLiteral("node[n%1]/enabled=false").arg(i); });
    row("set-names-of-many", [](int i) { return QStringLiteral("node[n%1]/name=m%1").arg(i); });
    row("set-numbers-of-many", [](int i) { return QStringLiteral("node[%1]/enabled=false").arg(i + 1); });
    row("set-changes-that-are-not-there", [](int i) { return QStringLiteral("m%1/enabled=false").arg(i); });
    row("set-changes-of-one", [](int i) { return QStringLiteral("node[n0]/serviceport=%1").arg(i + 1); });
    row("get-many", [](int i) { return QStringLiteral("node[n%1]/enabled").arg(i); });
    rows.back().command = QStringList{"get", "-"};
}
} // namespace

const std::vector<zoHostileInput>& zoHostileInput::all()
{
    static const std::vector<zoHostileInput> rows = [] {
        Table table;
        const QString other = zoHostileInput::other();
        table.addHosts("expand", {"hosts", "expand"});
        table.addHosts("fold", {"hosts", "fold"});
        table.addHosts("fold-brackets", {"hosts", "fold", "-b", "--names"});
        table.addHosts("tree", {"hosts", "tree"});
        table.addHosts("tree-json", {"hosts", "tree", "--json"});
        table.addHosts("new-wall", {"new", "--wall", "2x1", "--hosts", "-"});
        table.addHosts("new-large-wall", {"new", "--wall", "200x100", "--hosts", "-"});
        table.addHosts("new-cave",
                       {"new", "--cave", "3000x2400x3000", "--stereo", "left-right", "--hosts", "-"});
        table.addDocuments("check", {"check", "-"});
        table.addDocuments("check-json", {"check", "--json", "-"});
        table.addDocuments("describe", {"describe", "-"});
        table.addDocuments("format", {"format", "-"});
        table.addDocuments("draw", {"draw", "-", "-o", "-"});
        table.addDocuments("draw-screens", {"draw", "-", "-o", "-", "--picture", "screens"});
        table.addDocuments("draw-network", {"draw", "-", "-o", "-", "--picture", "network"});
        table.addDocuments("diff", {"diff", "-", other});
        table.addDocuments("diff-json", {"diff", "--json", "-", other});
        table.addDocuments("export", {"export", "-", "--equalizer", "-"});
        table.addDocuments("export-paraview", {"export", "-", "--paraview", "-"});
        table.addDocuments("get", {"get", "-"});
        table.addDocuments("get-json", {"get", "--defaults", "--json", "-"});
        table.addDocuments("set", {"set", "--force", "-", "cluster/booking=a"});
        table.addDocuments("set-nodes", {"set", "--force", "-", "node[*]/enabled=false"});
        table.addDocuments("set-projections", {"set", "--force", "-", "projection[*]/name=P"});
        table.addDocuments("merge", {"merge", "--force", other, "-", other});
        table.addDocuments("merge-both", {"merge", "--force", zoHostileInput::half(), "-", other});
        table.addDocuments("nodes", {"nodes", "-"});
        table.addDocuments("nodes-ansible", {"nodes", "--format", "ansible", "-"});
        table.addDocuments("report", {"report", "-", "-o", "-"});
        table.addDocuments("topology", {"topology", "-"});
        table.addLegacy("convert", {"convert", "-"});
        table.addTopologies("topology-read", {"topology", "--read", "-"});
        table.addSurveys("survey", {"survey", "-"});
        table.addSurveys("survey-json", {"survey", "--json", "-"});
        table.addSurveys("survey-planes", {"survey", "-", "-o", "-"});
        table.addChanges();
        return table.rows;
    }();
    return rows;
}
