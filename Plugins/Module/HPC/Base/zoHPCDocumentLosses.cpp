#include "zoHPCDocumentLosses.h"

#include "zoHPCTextParts.h"
#include "zoText.h"

#include <zoClusterTags.h>

#include <QHash>

#include <algorithm>

namespace
{
using Attribute = zoHPCTextParts::Attribute;
using Kind = zoHPCTextParts::Kind;

// A part of a document that can get lost.
struct Part
{
    Kind kind;
    int offset;
    QString tag;    // of an element
    QString parent; // its nearest known ancestor
    QVector<Attribute> attributes;
    bool holdsKeys = false;
};

bool isKnown(const QString& tag)
{
    using namespace zoClusterTags;
    for (const QLatin1String known :
         {Cluster, Master, Network, Node, Projection, Display, Window, Viewport}) {
        if (tag == known)
            return true;
    }
    return false;
}

// The parts of a text that parses, in its order. Texts in a "key" are the value of that.
QVector<Part> partsOf(const QString& text)
{
    const QString key = zoText("key");
    const zoHPCTextParts source(text);
    QVector<Part> parts;
    // Of each part of the source: what it became, its nearest known ancestor, whether it is in a "key".
    QVector<int> places;
    QVector<QString> known;
    QVector<bool> isInKey;
    for (const zoHPCTextParts::Part& part : source.parts()) {
        const int around = part.parent;
        const QString tag = around < 0 ? QString() : source.parts().at(around).tag;
        known.append(around < 0 ? QString() : isKnown(tag) ? tag : known.at(around));
        isInKey.append(around >= 0 && (tag == key || isInKey.at(around)));
        const bool isLeftOut = part.kind == Kind::Text && isInKey.constLast();
        places.append(isLeftOut ? -1 : parts.size());
        if (!isLeftOut)
            parts.append({part.kind, part.offset, part.tag, known.constLast(), part.attributes});
        if (part.kind != Kind::Element || part.tag != key)
            continue;
        for (int i = places.size() - 1; i >= 0 && !parts.at(places.at(i)).holdsKeys;
             i = source.parts().at(i).parent)
            parts[places.at(i)].holdsKeys = true;
    }
    return parts;
}

// Collects losses and counts lines as far as they have come.
class Collector final
{
public:
    explicit Collector(const QString& text) : m_text(text) {}

    void add(int offset, const QString& loss) { m_found.append({offset, loss}); }

    // What is lost of a part that no configuration holds; nothing of an element.
    void addOther(const Part& part)
    {
        if (part.kind == Kind::Comment)
            add(part.offset, zoHPCDocumentLosses::tr("the comment is left out"));
        else if (part.kind == Kind::Instruction)
            add(part.offset, zoHPCDocumentLosses::tr("the processing instruction is left out"));
        else if (part.kind == Kind::Text)
            add(part.offset, zoHPCDocumentLosses::tr("the text is left out"));
    }

    QVector<zoHPCDocumentLosses::Loss> take()
    {
        std::stable_sort(m_found.begin(), m_found.end(),
                         [](const Found& a, const Found& b) { return a.offset < b.offset; });
        QVector<zoHPCDocumentLosses::Loss> losses;
        int counted = 0;
        int line = 1;
        int lineStart = 0;
        for (const Found& found : qAsConst(m_found)) {
            for (; counted < found.offset; ++counted) {
                if (m_text.at(counted) == QLatin1Char('\n')) {
                    ++line;
                    lineStart = counted + 1;
                }
            }
            losses.append({line, found.offset - lineStart + 1, found.text});
        }
        return losses;
    }

private:
    struct Found
    {
        int offset;
        QString text;
    };

    const QString& m_text;
    QVector<Found> m_found;
};

QString valueOf(const Part& element, const QString& name)
{
    for (const Attribute& attribute : element.attributes) {
        if (attribute.name == name)
            return attribute.value;
    }
    return {};
}

// Whether an element may be what became of another one, where some got lost.
bool mayBecome(const Part& source, const Part& canonical)
{
    return std::all_of(source.attributes.begin(), source.attributes.end(), [&](const Attribute& attribute) {
        const QString kept = valueOf(canonical, attribute.name);
        return kept.isEmpty() || kept == attribute.value;
    });
}

// With blanks for line ends and tabs: documents keep them as they stand in a value, while the reader of
// streams makes them blanks.
QString withBlanks(QString value)
{
    for (const char* end : {"\r\n", "\r", "\n", "\t"})
        value.replace(QLatin1String(end), QLatin1String(" "));
    return value;
}

// Whether an attribute says nothing to any reader.
bool saysNothing(const Attribute& attribute, const QString& tag)
{
    using namespace zoClusterTags;
    const auto isOneOf = [&attribute](const QLatin1String a, const QLatin1String b) {
        return attribute.name == a || attribute.name == b;
    };
    const bool isZero = attribute.value == QLatin1String("0");
    // No reader distinguishes an empty one from a missing one.
    if (attribute.value.isEmpty())
        return true;
    // The windows of an imported wall are as large as its tiles. What its offset said, the import has told.
    if (tag == Projection)
        return isOneOf(TileWidthAttribute, TileHeightAttribute) ||
               isOneOf(OffsetXAttribute, OffsetYAttribute);
    return tag == Viewport && attribute.name == RotateAttribute && isZero;
}

// Whether the upgrade of old documents changes an attribute.
bool isOfUpgrade(const Attribute& attribute, const QString& tag)
{
    return tag == zoClusterTags::Projection || tag == zoClusterTags::Viewport ||
           (tag == zoClusterTags::Cluster && attribute.name == zoClusterTags::VersionAttribute);
}

void compare(const Part& source, const Part& canonical, bool isUpgraded, Collector& losses)
{
    for (const Attribute& attribute : source.attributes) {
        if (saysNothing(attribute, source.tag))
            continue;
        const QString kept = valueOf(canonical, attribute.name);
        if (withBlanks(kept) == withBlanks(attribute.value) || (!attribute.isWhole && !kept.isEmpty()))
            continue;
        const bool isReference =
            source.tag == zoClusterTags::Viewport && attribute.name == zoClusterTags::Projection;
        if (kept.isEmpty() && isReference)
            losses.add(attribute.offset,
                       zoHPCDocumentLosses::tr("there is no projection \"%1\": the reference is left out")
                           .arg(attribute.value));
        else if (kept.isEmpty())
            losses.add(attribute.offset, zoHPCDocumentLosses::tr("the attribute \"%1\" of \"%2\" is left out")
                                             .arg(attribute.name, source.tag));
        else if (!isUpgraded || !isOfUpgrade(attribute, source.tag))
            losses.add(attribute.offset,
                       zoHPCDocumentLosses::tr("the attribute \"%1\" of \"%2\" becomes \"%3\"")
                           .arg(attribute.name, source.tag, kept));
    }
}
} // namespace

QString zoHPCDocumentLosses::cutText()
{
    return tr("everything from the NUL character on is left out");
}

QVector<zoHPCDocumentLosses::Loss>
zoHPCDocumentLosses::ofFormat(const QString& source, const std::function<QString(Tiles)>& canonical)
{
    const QVector<Part> before = partsOf(source);
    const bool hasTiles = std::any_of(before.begin(), before.end(), [](const Part& part) {
        return part.tag == zoClusterTags::Projection && part.parent == zoClusterTags::Projection;
    });
    const QVector<Part> after = partsOf(canonical(hasTiles ? Tiles::Some : Tiles::None));
    // Reading keeps the order of what is of one kind, so the n-th stays the n-th; but where some got lost.
    const auto kindOf = [](const Part& part) { return part.parent + QLatin1Char('/') + part.tag; };
    QHash<QString, QVector<int>> kept;
    for (int i = 0; i < after.size(); ++i)
        kept[kindOf(after.at(i))].append(i);
    QHash<QString, int> count;
    for (const Part& part : before) {
        if (part.kind == Kind::Element)
            ++count[kindOf(part)];
    }
    QHash<QString, int> next;
    bool isUpgraded = false;
    Collector losses(source);
    for (const Part& part : before) {
        if (part.kind != Kind::Element) {
            losses.addOther(part);
            continue;
        }
        if (part.tag == zoClusterTags::Cluster && part.parent.isEmpty())
            isUpgraded = valueOf(part, zoClusterTags::VersionAttribute).toInt() < zoClusterTags::Version;
        const QString kind = kindOf(part);
        const QVector<int> candidates = kept.value(kind);
        int& at = next[kind];
        if (isKnown(part.tag) && at < candidates.size() &&
            (candidates.size() >= count.value(kind) || mayBecome(part, after.at(candidates.at(at)))))
            compare(part, after.at(candidates.at(at++)), isUpgraded, losses);
        else
            losses.add(part.offset, tr("the element \"%1\" is left out").arg(part.tag));
    }
    return losses.take();
}

QVector<zoHPCDocumentLosses::Loss> zoHPCDocumentLosses::ofConversion(const QString& source)
{
    Collector losses(source);
    const QVector<Part> parts = partsOf(source);
    for (const Part& part : parts) {
        if (part.kind != Kind::Element) {
            losses.addOther(part);
        } else if (!part.holdsKeys) {
            losses.add(part.offset, tr("the element \"%1\" is left out").arg(part.tag));
        } else if (part.tag == QLatin1String("key")) {
            for (const Attribute& attribute : part.attributes) {
                if (attribute.name != QLatin1String("name") && attribute.name != QLatin1String("type"))
                    losses.add(
                        attribute.offset,
                        tr("the attribute \"%1\" of \"%2\" is left out").arg(attribute.name, part.tag));
            }
        }
    }
    return losses.take();
}
