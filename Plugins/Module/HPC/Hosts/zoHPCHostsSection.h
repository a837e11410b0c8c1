#pragma once

#include "zoHPCTreeItem.h"
#include "zoHPCTreeWalk.h"

#include <QDomDocument>
#include <QStringList>

// The host tree as elements of a configuration document: the one place that knows which elements, which
// attributes, and in which order.
namespace zoHPCHostsSection
{
// Element name of an item.
QString tagOf(const zoHPCTreeItem& item);
extern const QString NameAttribute;
// Attributes of such an element that come first, in their order; empty for other elements. The rest is sorted.
QStringList attributeOrder(const QString& tagName);

// Writes an item and all below it. `Sink` is what elements go into, such as zoHPCDocumentWriter: it has
// openElement(tag), addAttribute(name, value) and closeElement().
template <class Sink>
void write(const zoHPCTreeItem* top, const QString& hostFile, Sink& sink);

// Writes the same into a document, below `parent`.
void append(const zoHPCTreeItem* top, const QString& hostFile, QDomDocument& document, QDomElement& parent);

template <class Sink>
void writeAttributes(const zoHPCTreeItem& item, const QString& hostFile, Sink& sink)
{
    // An option of that name replaces the attribute.
    const auto addFirst = [&sink, &item](const QString& name, bool exists, const QString& value) {
        const QString option = item.getOption(name);
        if (exists || !option.isEmpty())
            sink.addAttribute(name, option.isEmpty() ? value : option);
    };
    addFirst(NameAttribute, !item.isMaster() && !item.isNetwork(), item.hostName());
    addFirst(zoHPCOption::NodesFile, item.isMaster() && !hostFile.isEmpty(), hostFile);
    item.forEachOption([&sink](const QString& name, const QString& value) {
        if (!value.isEmpty() && name != NameAttribute && name != zoHPCOption::NodesFile)
            sink.addAttribute(name, value);
    });
}

template <class Sink>
void write(const zoHPCTreeItem* top, const QString& hostFile, Sink& sink)
{
    zoHPCTreeWalk::around(
        top,
        [&sink, &hostFile](const zoHPCTreeItem* item) {
            sink.openElement(tagOf(*item));
            writeAttributes(*item, hostFile, sink);
        },
        [&sink](const zoHPCTreeItem*) { sink.closeElement(); });
}
} // namespace zoHPCHostsSection
