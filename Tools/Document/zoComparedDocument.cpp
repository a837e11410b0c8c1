#include "zoComparedDocument.h"

#include "zoItemPaths.h"

zoComparedDocument::zoComparedDocument(const QDomDocument& document) : m_document(document)
{
    // Tiles count for the paths of what stands behind them.
    const zoItemPaths paths(document.documentElement());
    for (const zoItemPaths::Item& item : paths.items()) {
        if (item.isComputed)
            item.element.parentNode().removeChild(item.element);
        else
            m_paths[item.kind] << item.path;
    }
}
