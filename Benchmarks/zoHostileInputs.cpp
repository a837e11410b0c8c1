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
    void addHosts();
    void addDocuments(const QByteArray& name, const QStringList& command);
    void addLegacy();

    std::vector<zoHostileInput> rows;

private:
    void add(const QByteArray& name, const QStringList& command, const Text& text)
    {
        rows.push_back({name, command, text});
    }
};

void Table::addHosts()
{
    const QStringList expand{"hosts", "expand"};
    const QStringList fold{"hosts", "fold"};
    const QStringList brackets{"hosts", "fold", "-b", "--names"};
    const QStringList tree{"hosts", "tree", "--json"};
    add("words-that-are-no-names", expand, filled("_ "));
    add("words-that-lose-characters", expand, filled("a_ "));
    add("ranges-from-brackets-that-fill-nothing", expand, filled("n[1-2] - m1 "));
    add("blocks-that-are-no-ranges", expand, filled("n[1x] "));
    add("brackets-that-open", expand, filled("["));
    add("moved-networks-inside-each-other", expand, filled("h[forwards="));
    add("ranges", expand, numbered([](const QByteArray& i) { return 'n' + i + "x0 - n" + i + "x9999\n"; }));
    add("largest-bracket", tree,
        counted(1000000, [](int count) { return "n[1-" + QByteArray::number(count) + ']'; }));
    add("grid-of-brackets", brackets, counted(1000000, [](int count) {
            return "n[1-1000]m[1-" + QByteArray::number(std::max(1, count / 1000)) + ']';
        }));
    add("long-name-of-many", fold, [](int size) { return QByteArray(size, 'n') + "[1-1000000]"; });
    add("numbers-of-one-bracket", fold,
        between("n[", numbered([](const QByteArray& i) { return i + ','; }), "0]"));
    add("names-of-one-number", brackets, numbered([](const QByteArray& i) { return 'n' + i + ' '; }));
    add("names-backwards", fold, counted(100000, [](int count) {
            QByteArray text;
            while (count-- > 0)
                text += 'n' + QByteArray::number(count) + ' ';
            return text;
        }));
    add("one-name-of-many-numbers", brackets, filled("a1"));
    add("names-of-many-numbers", brackets, numbered([](const QByteArray& i) {
            return QByteArray("a1").repeated(13) + 'b' + i + 'c' + i + '0' + ' ';
        }));
    add("braces", tree, filled("{}"));
    add("deep-braces", tree, counted(5000, [](int count) {
            return QByteArray("{a").repeated(count) + QByteArray(" a").repeated(2000);
        }));
    add("gateways", fold, filled("gw{a}"));
    add("option-block", expand, between("h[", filled("rt=1,"), QByteArray()));
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

void Table::addLegacy()
{
    const auto parameter = [](const QByteArray& name) { return "<key name=\"" + name + "\">"; };
    const auto row = [&](const char* input, const Text& text) {
        add(QByteArray("convert-") + input, {"convert", "-"}, between("<config>", text, "</config>"));
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
} // namespace

const std::vector<zoHostileInput>& zoHostileInput::all()
{
    static const std::vector<zoHostileInput> rows = [] {
        Table table;
        table.addHosts();
        table.addDocuments("check", {"check", "-"});
        table.addDocuments("format", {"format", "-"});
        table.addDocuments("draw", {"draw", "-", "-o", "-"});
        table.addDocuments("draw-screens", {"draw", "-", "-o", "-", "--picture", "screens"});
        table.addDocuments("diff", {"diff", "-", zoHostileInput::other()});
        table.addDocuments("export", {"export", "-", "--equalizer", "-"});
        table.addLegacy();
        return table.rows;
    }();
    return rows;
}
