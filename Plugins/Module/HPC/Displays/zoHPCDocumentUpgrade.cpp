#include "zoHPCDocumentUpgrade.h"

#include "zoHPCProjectionItem.h"
#include "zoHPCProjectionType.h"
#include "zoHPCViewportItem.h"
#include "zoText.h"

#include <zoClusterTags.h>

#include <QDomDocument>
#include <QHash>
#include <QRegularExpression>

int zoHPCDocumentUpgrade::versionOf(const QDomDocument& document)
{
    return document.documentElement()
        .attribute(zoClusterTags::VersionAttribute, QString::fromLatin1("0"))
        .toInt();
}

void zoHPCDocumentUpgrade::upgrade(int version, QTreeWidgetItem& projections, QTreeWidgetItem& displays)
{
    if (version == 0)
        correctWrongRows(projections, displays);
}

bool zoHPCDocumentUpgrade::correctWrongRows(const QTreeWidgetItem& projections, QTreeWidgetItem& displays)
{
    static const QRegularExpression rowPattern(QString::fromLatin1("row:(\\d+)"));

    QHash<QString, QString> renamed;
    for (int i = 0; i < projections.childCount(); ++i) {
        const auto* wall = dynamic_cast<zoHPCProjectionItem*>(projections.child(i));
        if (!wall || wall->kind() != zoHPCProjectionType::Kind::Wall)
            continue;
        const int rows = wall->getInt(zoHPCProjectionItem::Rows);
        if (rows < 2)
            continue;
        const QList<zoHPCProjectionItem*> tiles = wall->children<zoHPCProjectionItem>();
        for (const zoHPCProjectionItem* tile : tiles) {
            if (!tile)
                continue;
            QString name = tile->getString(zoHPCProjectionItem::Name);
            // The last one is the tile's own: the wall's name may hold such a text, too.
            QRegularExpressionMatch match;
            if (name.lastIndexOf(rowPattern, -1, &match) < 0)
                continue;
            const QString oldName = name;
            const int row = match.captured(1).toInt();
            name.replace(match.capturedStart(), match.capturedLength(), zoText("row:%1").arg(rows + 1 - row));
            renamed.insert(oldName, name);
        }
    }
    if (renamed.isEmpty())
        return false;

    bool isChanged = false;
    const QList<zoHPCViewportItem*> viewports =
        zoHPCTreeWidgetItem::subChildren<zoHPCViewportItem>(&displays);
    for (zoHPCViewportItem* viewport : viewports) {
        const auto it = renamed.constFind(viewport->getString(zoHPCViewportItem::Projection));
        if (it == renamed.constEnd())
            continue;
        viewport->setProjection(it.value());
        viewport->setString(zoHPCViewportItem::ProjectionIdentifier, QString::fromLatin1(""));
        isChanged = true;
    }
    return isChanged;
}
