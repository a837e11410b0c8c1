#include "zoHPCTreeWidgetItem.h"

#include <QDomDocument>

zoHPCTreeWidgetItem::zoHPCTreeWidgetItem() : QTreeWidgetItem(QTreeWidgetItem::UserType) {}

// The toolkit's copy constructor would not take over the item type.
// NOLINTNEXTLINE(bugprone-copy-constructor-init)
zoHPCTreeWidgetItem::zoHPCTreeWidgetItem(const zoHPCTreeWidgetItem& prototype)
    : QTreeWidgetItem(QTreeWidgetItem::UserType)
{
    QTreeWidgetItem::operator=(prototype);
}

zoHPCTreeWidgetItem::~zoHPCTreeWidgetItem() = default;

QDomElement zoHPCTreeWidgetItem::toXML(QDomDocument& document, const QString& tagName) const
{
    QDomElement element = document.createElement(tagName);
    for (const auto& [col, name] : getColumns()) {
        const QVariant value = data(col, Qt::EditRole);
        if (value.isValid())
            element.setAttribute(name, value.toString());
    }
    return element;
}

void zoHPCTreeWidgetItem::fromXML(const QDomElement& element)
{
    // Taken once: reading a column may change which map the item has.
    const ColumnMap& columns = getColumns();
    for (const auto& [col, name] : columns) {
        const QString text = element.attribute(name);
        // Unset first: a value that equals the text as a number would keep its type and lose its spelling.
        if (data(col, Qt::EditRole).isValid())
            setData(col, Qt::EditRole, QVariant());
        if (!text.isEmpty())
            setData(col, Qt::EditRole, text);
    }
    update();
}

const zoHPCTreeWidgetItem::ColumnMap& zoHPCTreeWidgetItem::getColumns() const
{
    static const ColumnMap none;
    return none;
}

bool zoHPCTreeWidgetItem::isSet(int col) const
{
    return !data(col, Qt::EditRole).toString().isEmpty();
}

int zoHPCTreeWidgetItem::getInt(int col) const
{
    return data(col, Qt::EditRole).toInt();
}

double zoHPCTreeWidgetItem::getDouble(int col) const
{
    return data(col, Qt::EditRole).toDouble();
}

QString zoHPCTreeWidgetItem::getString(int col) const
{
    return data(col, Qt::EditRole).toString();
}

bool zoHPCTreeWidgetItem::getBool(int col) const
{
    return data(col, Qt::EditRole).toBool();
}

void zoHPCTreeWidgetItem::setInt(int col, int value)
{
    setData(col, Qt::EditRole, value);
}

void zoHPCTreeWidgetItem::setDouble(int col, double value)
{
    setData(col, Qt::EditRole, value);
}

void zoHPCTreeWidgetItem::setString(int col, const QString& value)
{
    setData(col, Qt::EditRole, value);
}

void zoHPCTreeWidgetItem::setBool(int col, bool value)
{
    setData(col, Qt::EditRole, value);
}

void zoHPCTreeWidgetItem::clearChildren()
{
    // All at once: a shown and expanded item would lay out its rows again for each one that goes.
    qDeleteAll(takeChildren());
}

QStringList zoHPCTreeWidgetItem::attributeOrder(const ColumnMap& columns)
{
    QStringList names;
    for (const auto& column : columns)
        names.append(column.second);
    return names;
}

void zoHPCTreeWidgetItem::walk(const QDomElement& element,
                               const std::function<bool(const QDomElement&)>& enter,
                               const std::function<void(const QDomElement&)>& leave)
{
    QDomElement current = element.firstChildElement();
    while (!current.isNull()) {
        if (!enter(current))
            return;
        QDomElement next = current.firstChildElement();
        while (next.isNull()) {
            leave(current);
            next = current.nextSiblingElement();
            if (!next.isNull())
                break;
            current = current.parentNode().toElement();
            if (current.isNull() || current == element)
                return;
        }
        current = next;
    }
}

QList<QDomElement> zoHPCTreeWidgetItem::descendants(const QDomElement& element, const QString& tagName)
{
    QList<QDomElement> result;
    walk(
        element,
        [&](const QDomElement& entered) {
            if (entered.tagName() == tagName)
                result.append(entered);
            return true;
        },
        [](const QDomElement&) {});
    return result;
}
