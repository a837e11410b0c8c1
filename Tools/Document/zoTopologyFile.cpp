#include "zoTopologyFile.h"

#include "zoHPCBracketText.h"
#include "zoHostNames.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{
// As deep as hosts text is written here; no network of gateways is.
constexpr int s_deepest = 100;
} // namespace

bool zoTopologyFile::add(const QString& from, const QString& to)
{
    if (m_from.contains(to))
        return m_from.value(to) == from;
    int depth = 0;
    for (QString above = from; !above.isEmpty(); above = m_from.value(above)) {
        if (above == to || ++depth > s_deepest)
            return false;
    }
    if (!m_routes.contains(from))
        m_sources << from;
    m_routes[from] << to;
    m_from.insert(to, from);
    return true;
}

bool zoTopologyFile::read(const QString& text)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    bool isRoutes = false;
    bool hasRoutes = false;
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines.at(i).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char(';')))
            continue;
        if (line.startsWith(QLatin1Char('['))) {
            isRoutes = line == QLatin1String("[routes]") || line == QLatin1String("[Main]");
            hasRoutes = hasRoutes || isRoutes;
        } else if (isRoutes && !readRoute(line, i + 1)) {
            return false;
        }
    }
    return hasRoutes || fail(1, tr("no topology: it has no section [routes]"));
}

bool zoTopologyFile::readRoute(const QString& line, int number)
{
    static const QRegularExpression separator(QStringLiteral("[:=]"));
    const int middle = line.indexOf(separator);
    if (middle < 0)
        return fail(number, tr("no route such as \"gateway: node[1-8]\""));
    QStringList from;
    QStringList to;
    if (!names(line.left(middle), from) || !names(line.mid(middle + 1), to)) {
        m_errorLine = number;
        return false;
    }
    if (from.isEmpty() || to.isEmpty())
        return fail(number, tr("a route without nodes"));
    // A node hangs below one gateway: the gateways of a route get as many of its nodes each.
    if (from.size() > 1)
        m_notes << tr("line %1: the nodes behind %2 are spread over them")
                       .arg(QString::number(number), line.left(middle).trimmed());
    for (int i = 0; i < to.size(); ++i) {
        const QString& gateway = from.at(int(qint64(i) * from.size() / to.size()));
        if (!add(gateway, to.at(i)))
            return fail(number,
                        tr("\"%1\" is reached in more than one way, or by way of itself").arg(to.at(i)));
    }
    return true;
}

bool zoTopologyFile::names(const QString& set, QStringList& result)
{
    static const QRegularExpression operation(QStringLiteral("[!&^@]"));
    const QRegularExpressionMatch match = operation.match(set);
    if (match.hasMatch())
        return fail(1,
                    tr("\"%1\" of ClusterShell is not supported; write the nodes out").arg(match.captured()));
    zoHPCBracketText brackets;
    const QString expanded = brackets.expanded(set);
    if (brackets.hasError())
        return fail(1, brackets.error().reason);
    static const QRegularExpression separators(QStringLiteral("[\\s,]+"));
    result = expanded.split(separators, Qt::SkipEmptyParts);
    return true;
}

bool zoTopologyFile::fail(int line, const QString& reason)
{
    m_errorLine = line;
    m_error = reason;
    return false;
}

QByteArray zoTopologyFile::text() const
{
    QByteArray result("[routes]\n");
    for (const QString& source : m_sources) {
        const QStringList& nodes = m_routes[source];
        result +=
            source.toUtf8() + ": " + zoHostNames::bracketText({nodes.cbegin(), nodes.cend()}, false) + '\n';
    }
    return result;
}

QString zoTopologyFile::hostsText() const
{
    QString result;
    for (const QString& source : m_sources) {
        if (!m_from.contains(source))
            write(source, 0, result);
    }
    return result;
}

// No deeper than add() takes.
void zoTopologyFile::write(const QString& from, int depth, QString& result) const
{
    const QStringList nodes = m_routes.value(from);
    const QString indent(depth * 2, QLatin1Char(' '));
    result += indent + QLatin1String("{\n");
    std::vector<QString> plain;
    const auto writePlain = [&] {
        if (!plain.empty())
            result += indent + QLatin1String("  ") +
                      QString::fromUtf8(zoHostNames::orderedBracketText(plain)) + QLatin1Char('\n');
        plain.clear();
    };
    for (const QString& node : nodes) {
        if (!m_routes.contains(node)) {
            plain.push_back(node);
            continue;
        }
        writePlain();
        result += indent + QLatin1String("  ") + node + QLatin1Char('\n');
        write(node, depth + 1, result);
    }
    writePlain();
    result += indent + QLatin1String("}\n");
}
