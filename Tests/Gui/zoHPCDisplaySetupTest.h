#pragma once

#include "zoTestCase.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCDisplayItem.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <QAction>
#include <QDomDocument>
#include <QStackedWidget>
#include <QTreeWidget>

#include <memory>

// What the tests of the display setup have in common: a dialog, made anew for each, and ways to its trees and fields.
class zoHPCDisplaySetupTest : public zoTestCase
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

protected:
    // A wall of 2 x 2 tiles, two windows with three viewports.
    static const char* const SMALL_SETUP;

    static QString text(const char* latin1) { return QString::fromLatin1(latin1); }
    static QDomDocument documentOf(const QString& xml);

    QTreeWidget* projectionTree() const
    {
        return m_editor->findChild<QTreeWidget*>(text("m_projectionTree"));
    }
    QTreeWidget* displayTree() const { return m_editor->findChild<QTreeWidget*>(text("m_displayTree")); }
    zoHPCProjectionItem* projection(int row) const
    {
        return dynamic_cast<zoHPCProjectionItem*>(projectionTree()->topLevelItem(row));
    }
    zoHPCDisplayItem* display(int row) const
    {
        return dynamic_cast<zoHPCDisplayItem*>(displayTree()->topLevelItem(row));
    }
    QStringList projectionNames() const;
    QStringList viewportProjections() const;
    QStringList renderNodes() const; // of plain windows
    // The order of attributes is that of the DOM, which is the same within one process.
    QString saved() const;
    template <class T = QWidget>
    T* field(const char* name) const
    {
        return m_editor->findChild<T*>(text(name));
    }
    QString page() const { return field<QStackedWidget>("m_panels")->currentWidget()->objectName(); }
    QAction* action(QTreeWidget* tree, const char* name) const;
    void load(const char* xml) { m_editor->loadFromXML(documentOf(text(xml))); }
    void load(const QString& xml) { m_editor->loadFromXML(documentOf(xml)); }

    std::unique_ptr<zoHPCDisplayGUII> m_editor;
};
