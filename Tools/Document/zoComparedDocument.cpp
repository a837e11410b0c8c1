#include "zoComparedDocument.h"

#include "zoItemPaths.h"

zoComparedDocument::zoComparedDocument(const QDomElement& root) : m_root(root)
{
    const zoItemPaths paths(root);
    for (const zoItemPaths::Item& item : paths.items()) {
        if (!item.isComputed)
            m_paths[item.kind] << item.path;
    }
}
