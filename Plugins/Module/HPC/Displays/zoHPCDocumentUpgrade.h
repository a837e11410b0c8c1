#pragma once

class QDomDocument;
class QTreeWidgetItem;

// The steps from documents of earlier versions to the one that is written (zoClusterTags::Version). They work on the
// items of a display setup that was just read, before its viewports are linked. The host tree is the same in all
// versions.
class zoHPCDocumentUpgrade final
{
public:
    zoHPCDocumentUpgrade() = delete;

    // 0 for a document that names none.
    static int versionOf(const QDomDocument& document);
    // All steps from that version on, oldest first.
    static void upgrade(int version, QTreeWidgetItem& projections, QTreeWidgetItem& displays);

    // Documents of version 0 counted the rows of tiled walls from the other end. Returns whether a viewport changed.
    static bool correctWrongRows(const QTreeWidgetItem& projections, QTreeWidgetItem& displays);
};
