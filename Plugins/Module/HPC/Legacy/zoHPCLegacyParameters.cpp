#include "zoHPCLegacyParameters.h"

#include "zoHPCDocumentText.h"
#include "zoText.h"

#include <QByteArray>
#include <QDomDocument>

#include <zoLog.h>

#include <cstddef>
#include <vector>

namespace
{
QString decoded(const QString& base64)
{
    const QByteArray bytes = QByteArray::fromBase64(base64.toLatin1().constData());
    return bytes.isNull() ? QString() : QString::fromUtf8(bytes.constData()); // ends at the first NUL
}

// A parameter of a legacy file and where the text of its element, descendants included, stands.
struct Key
{
    QDomElement element;
    int textBegin;
    int textEnd;
};

// All parameters in document order; `text` receives the whole text of the document. One walk for all of them:
// asking each element for its text would visit an inner element once per outer one.
std::vector<Key> keysOf(const QDomDocument& legacy, QString& text)
{
    std::vector<Key> keys;
    std::vector<std::size_t> open;
    bool tooDeep = false;
    const auto isKey = [](const QDomNode& node) {
        return node.isElement() && node.nodeName() == QLatin1String("key");
    };
    const QDomNode root = legacy.documentElement();
    QDomNode node = root;
    while (!node.isNull()) {
        if (isKey(node)) {
            if (open.size() < std::size_t(zoHPCLegacyParameters::MaximumNested)) {
                keys.push_back({node.toElement(), int(text.size()), int(text.size())});
                open.push_back(keys.size() - 1);
            } else {
                tooDeep = true;
            }
        } else if (node.isText() || node.isCDATASection()) {
            text += node.nodeValue();
        }

        if (node.isElement() && node.hasChildNodes()) {
            node = node.firstChild();
            continue;
        }
        for (;;) {
            if (!open.empty() && keys[open.back()].element == node) {
                keys[open.back()].textEnd = int(text.size());
                open.pop_back();
            }
            if (node == root) {
                node = QDomNode();
                break;
            }
            const QDomNode next = node.nextSibling();
            if (!next.isNull()) {
                node = next;
                break;
            }
            node = node.parentNode();
        }
    }
    if (tooDeep) {
        zoLog::error("%s", qUtf8Printable(zoHPCLegacyParameters::tr(
                                              "Legacy parameters inside more than %1 others were ignored.")
                                              .arg(zoHPCLegacyParameters::MaximumNested)));
    }
    return keys;
}
} // namespace

void zoHPCLegacyParameters::read(const QString& legacyText)
{
    m_text = legacyText;
    m_values.clear();
    QDomDocument legacy;
    zoHPCDocumentText::parse(legacyText, legacy);
    QString text;
    const std::vector<Key> keys = keysOf(legacy, text);
    for (const Key& key : keys) {
        const QString value = text.mid(key.textBegin, key.textEnd - key.textBegin);
        const bool encoded = key.element.attribute(zoText("type")) == QLatin1String("QString");
        m_values.insert(key.element.attribute(zoText("name")), encoded ? decoded(value) : value);
    }
    m_mode = chooseMode();
}

QString zoHPCLegacyParameters::value(const char* name, const char* defaultValue) const
{
    return m_values.value(QLatin1String(name), QLatin1String(defaultValue));
}

bool zoHPCLegacyParameters::isOn(const char* name) const
{
    return value(name, "0") == QLatin1String("1");
}

zoHPCLegacyParameters::Mode zoHPCLegacyParameters::chooseMode() const
{
    const QString type = value("zoClusterProjectionType", "");
    if (type == QLatin1String("Custom"))
        return Custom;
    if (type == QLatin1String("Raytracing"))
        return Raytracing;
    if (type == QLatin1String("Powerwall"))
        return Powerwall;
    if (!value("zoClusterHosts", "").isEmpty())
        return Old;
    if (isOn("zoClusterPWEnable"))
        return Powerwall;
    return Custom;
}

QStringList zoHPCLegacyParameters::pipes() const
{
    QStringList pipes;
    for (int i = 0;; ++i) {
        const auto pipe = m_values.constFind(zoText("zoClusterPipe%1").arg(i));
        if (pipe == m_values.constEnd())
            return pipes;
        pipes.append(pipe.value());
    }
}

QStringList zoHPCLegacyParameters::pipeNamesFrom(int firstNumber) const
{
    const QString prefix = zoText("zoClusterPipe");
    QMap<uint, QString> pipes;
    for (auto it = m_values.lowerBound(prefix); it != m_values.cend() && it.key().startsWith(prefix); ++it) {
        const QString number = it.key().mid(prefix.size());
        if (number == QString::number(number.toUInt()) && number.toUInt() >= uint(firstNumber))
            pipes.insert(number.toUInt(), it.key());
    }
    return pipes.values();
}

QString zoHPCLegacyParameters::entryName(int entry) const
{
    switch (m_mode) {
    case Raytracing:
        return zoText("zoClusterSortFirstServers");
    case Powerwall:
        return zoText("zoClusterPWServers");
    case Custom:
        return zoText("zoClusterPipe%1").arg(entry);
    case Old:
        return zoText("zoClusterHosts");
    }
    return QString();
}

QHash<QString, zoHPCElementScanner::Place> zoHPCLegacyParameters::placesOf(const QStringList& names) const
{
    QHash<QString, zoHPCElementScanner::Place> places;
    for (const QString& name : names)
        places.insert(name, {});
    if (places.isEmpty())
        return places;

    std::vector<int> open; // depths of the parameters around
    zoHPCElementScanner scanner(m_text);
    while (scanner.next()) {
        const int depth = scanner.around().size();
        while (!open.empty() && open.back() >= depth)
            open.pop_back();
        if (scanner.tag() != QLatin1String("key"))
            continue;
        open.push_back(depth);
        // The last one of a name holds.
        const auto place = places.find(scanner.attribute(zoText("name")));
        if (place != places.end() && open.size() <= std::size_t(MaximumNested))
            *place = scanner.place();
    }
    return places;
}
