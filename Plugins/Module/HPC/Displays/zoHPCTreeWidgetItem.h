#pragma once

#include <QDomElement>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTreeWidget>
#include <QTreeWidgetItem>

#include <functional>
#include <map>

class QDomDocument;

// A row of the display setup whose properties are the values of its columns (edit role), saved as attributes
// of one XML element.
class zoHPCTreeWidgetItem : public QTreeWidgetItem
{
public:
    // Column number to attribute name. Columns that it lacks live at run time only.
    using ColumnMap = std::map<int, QString>;

    zoHPCTreeWidgetItem();
    ~zoHPCTreeWidgetItem() override;

    zoHPCTreeWidgetItem& operator=(const zoHPCTreeWidgetItem&) = delete;

    // Derives from the columns what follows from them: texts, colours, icons, computed children.
    virtual void update() = 0;

    // A new element, not attached to a parent, with an attribute for each column of the map that was ever set.
    virtual QDomElement toXML(QDomDocument& document, const QString& tagName) const;

    // Reads the attributes of all columns of the map as texts, then calls update(). A column whose attribute
    // is missing or empty is unset.
    virtual void fromXML(const QDomElement& element);

    // The map may depend on the item's state; the reference stays valid.
    virtual const ColumnMap& getColumns() const;

    // Conversions are those of QVariant: an unset column reads as 0, 0.0, "" and false.
    // An empty text is no value: it is not there any more when the file is read.
    bool isSet(int col) const;
    int getInt(int col) const;
    double getDouble(int col) const;
    QString getString(int col) const;
    bool getBool(int col) const;

    void setInt(int col, int value);
    void setDouble(int col, double value);
    void setString(int col, const QString& value);
    void setBool(int col, bool value);

    // Destroys all children, in one removal: keep no pointers to them across update() of a projection.
    void clearChildren();

    // One entry per direct child, in order; null for a child of another kind.
    template <class T>
    QList<T*> children() const
    {
        QList<T*> result;
        result.reserve(childCount());
        for (int i = 0; i < childCount(); ++i)
            result.append(dynamic_cast<T*>(child(i)));
        return result;
    }

    // All descendants of the kind in depth-first order. Other rows than display items are skipped with all below.
    template <class T>
    QList<T*> subChildren() const
    {
        QList<T*> result;
        for (int i = 0; i < childCount(); ++i)
            collect(child(i), result);
        return result;
    }

    // The same over all rows of a tree.
    template <class T>
    static QList<T*> subChildren(const QTreeWidget* tree)
    {
        return subChildren<T>(tree->invisibleRootItem());
    }

    // The same over all rows below a root of any kind.
    template <class T>
    static QList<T*> subChildren(const QTreeWidgetItem* root)
    {
        QList<T*> result;
        for (int i = 0; i < root->childCount(); ++i)
            collect(root->child(i), result);
        return result;
    }

    // Whether no row of the display setup is above it; rows may have a root that no view shows.
    bool isTopLevel() const { return dynamic_cast<const zoHPCTreeWidgetItem*>(parent()) == nullptr; }

    // Attribute names of a map in the order in which they are written.
    static QStringList attributeOrder(const ColumnMap& columns);

protected:
    // A row with the same values, without parent and children.
    zoHPCTreeWidgetItem(const zoHPCTreeWidgetItem& prototype);

    // Visits all elements below `element` in document order, without a stack. `enter` is called before the
    // elements below an element and may end the walk with false, `leave` after them.
    static void walk(const QDomElement& element, const std::function<bool(const QDomElement&)>& enter,
                     const std::function<void(const QDomElement&)>& leave);

    // All elements of that name below `element`, at any depth, in document order.
    static QList<QDomElement> descendants(const QDomElement& element, const QString& tagName);

private:
    template <class T>
    static void collect(QTreeWidgetItem* item, QList<T*>& result)
    {
        if (dynamic_cast<zoHPCTreeWidgetItem*>(item) == nullptr)
            return;
        if (T* match = dynamic_cast<T*>(item))
            result.append(match);
        for (int i = 0; i < item->childCount(); ++i)
            collect(item->child(i), result);
    }
};
