#include "zoHPCTreeViewTest.h"

#include <zoHPCDocumentText.h>

void zoHPCTreeViewTest::init()
{
    m_view = std::make_unique<zoHPCTreeGUIW>();
    m_tree = m_view->findChild<QTreeWidget*>(QStringLiteral("m_treeWidget"));
    m_master = asItem(m_tree->topLevelItem(0));
}

void zoHPCTreeViewTest::cleanup()
{
    m_view.reset();
    zoTestCase::cleanup();
}

bool zoHPCTreeViewTest::sameIcon(const QIcon& a, const QIcon& b)
{
    return a.pixmap(32, 32).toImage() == b.pixmap(32, 32).toImage();
}

QString zoHPCTreeViewTest::outline(const QTreeWidgetItem* item)
{
    QStringList parts;
    for (int i = 0; i < item->childCount(); ++i) {
        const zoHPCTreeItem* child = asItem(item->child(i));
        QString part = child->isNetwork() ? QString() : child->hostName();
        const QString below = outline(child);
        if (child->isNetwork())
            part = '{' + below + '}';
        else if (!below.isEmpty())
            part += ' ' + below;
        parts << part;
    }
    return parts.join(' ');
}

QString zoHPCTreeViewTest::outline() const
{
    return outline(m_master);
}

QString zoHPCTreeViewTest::details(const QTreeWidgetItem* item)
{
    QString result;
    for (int i = 0; i < item->childCount(); ++i) {
        auto* child = asItem(const_cast<QTreeWidgetItem*>(item)->child(i));
        result +=
            QStringLiteral("(%1%2%3 '%4' '%5' '%6'")
                .arg(child->isNetwork() ? "W" : "", child->isNode() ? "N" : "", child->isMaster() ? "M" : "",
                     child->hostName(), child->text(0), child->foreground(0).color().name());
        result += QString::number(qHash(
            QByteArray(reinterpret_cast<const char*>(child->icon(0).pixmap(32, 32).toImage().constBits()),
                       32 * 32 * 4)));
        for (const auto& option : child->getOptions())
            result += QStringLiteral(" %1=%2").arg(option.first, option.second);
        result += details(child) + ')';
    }
    return result;
}

zoHPCTreeItem* zoHPCTreeViewTest::item(std::initializer_list<int> rows) const
{
    QTreeWidgetItem* found = m_master;
    for (int row : rows)
        found = found ? found->child(row) : nullptr;
    return asItem(found);
}

QString zoHPCTreeViewTest::section()
{
    QDomDocument document;
    document.appendChild(document.createElement("cluster"));
    m_view->saveToXML(document);
    return zoHPCDocumentText::toText(document);
}

void zoHPCTreeViewTest::load(const QString& text)
{
    QDomDocument document;
    QVERIFY(document.setContent(text));
    m_view->loadFromXML(document);
}

QStringList zoHPCTreeViewTest::running() const
{
    QStringList ids;
    std::vector<zoHPCTreeItem*> items;
    m_master->getAllSubItems(items);
    std::map<QString, zoHPCTreeItem*> cache;
    for (zoHPCTreeItem* item : items) {
        const QString id = item->addToIDCache(cache);
        if (item->isRunning())
            ids << id;
    }
    return ids;
}
