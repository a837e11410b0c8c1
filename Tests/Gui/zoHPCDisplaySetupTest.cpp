#include "zoHPCDisplaySetupTest.h"

const char* const zoHPCDisplaySetupTest::SMALL_SETUP =
    "<cluster version='1'>"
    "<projection name='Wall' type='wall' rows='2' columns='2' distance='1500'/>"
    "<projection name='P' type='plane' rows='1' columns='1'/>"
    "<display eyeseparation='60' camera='Cam' user='1' hardwaresync='false'>"
    "<window node='a' screen='0' x='0' y='0' width='640' height='480' fullscreen='true'>"
    "<viewport projection='Wall row:1 col:2' position='fill' eye='mono'/>"
    "<viewport projection='P' position='left' eye='left'/></window>"
    "<window node='b'><viewport projection='Wall row:2 col:1' position='fill'/></window>"
    "</display></cluster>";

void zoHPCDisplaySetupTest::init()
{
    m_editor = std::make_unique<zoHPCDisplayGUII>();
}

void zoHPCDisplaySetupTest::cleanup()
{
    m_editor.reset();
    zoTestCase::cleanup();
}

QDomDocument zoHPCDisplaySetupTest::documentOf(const QString& xml)
{
    QDomDocument document;
    QString message;
    if (!document.setContent(xml, &message))
        qFatal("%s", qPrintable(message));
    return document;
}

QStringList zoHPCDisplaySetupTest::projectionNames() const
{
    QStringList names;
    for (int i = 0; i < projectionTree()->topLevelItemCount(); ++i)
        names << projectionTree()->topLevelItem(i)->text(0);
    return names;
}

QStringList zoHPCDisplaySetupTest::viewportProjections() const
{
    QStringList names;
    for (const zoHPCViewportItem* viewport : m_editor->getViewportItems())
        names << viewport->getString(zoHPCViewportItem::Projection);
    return names;
}

QStringList zoHPCDisplaySetupTest::renderNodes() const
{
    QStringList names;
    for (zoHPCWindowItem* window : m_editor->getWindowItems()) {
        if (!dynamic_cast<zoHPCViewportItem*>(window))
            names << window->renderNode();
    }
    return names;
}

QString zoHPCDisplaySetupTest::saved() const
{
    QDomDocument document;
    document.appendChild(document.createElement(text("cluster")));
    document.documentElement().setAttribute(text("version"), text("1"));
    m_editor->saveToXML(document);
    return document.toString(1);
}

QAction* zoHPCDisplaySetupTest::action(QTreeWidget* tree, const char* name) const
{
    for (QAction* candidate : tree->actions()) {
        if (candidate->text() == text(name))
            return candidate;
    }
    return nullptr;
}
