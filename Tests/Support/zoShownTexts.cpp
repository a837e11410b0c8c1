#include "zoShownTexts.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMetaProperty>
#include <QStatusBar>
#include <QTabBar>
#include <QTreeView>
#include <QWidget>

namespace
{
const QChar Open(0x27e6);
const QChar Close(0x27e7);

// Those that widgets and actions of Qt show to people.
const char* const Properties[] = {"text",
                                  "title",
                                  "windowTitle",
                                  "iconText",
                                  "toolTip",
                                  "statusTip",
                                  "whatsThis",
                                  "placeholderText",
                                  "prefix",
                                  "suffix",
                                  "specialValueText",
                                  "accessibleName",
                                  "labelText",
                                  "informativeText",
                                  "accessibleDescription"};

QString pathOf(const QObject* object)
{
    QStringList path;
    for (; object != nullptr; object = object->parent())
        path.prepend(object->objectName().isEmpty() ? QLatin1String(object->metaObject()->className())
                                                    : object->objectName());
    return path.join(QLatin1Char('/'));
}

class Reader final
{
public:
    explicit Reader(QVector<zoShownTexts::Text>& texts) : m_texts(texts) {}

    void readProperties(const QObject* object)
    {
        // Texts of fields are data.
        const bool isField = qobject_cast<const QLineEdit*>(object) != nullptr ||
                             qobject_cast<const QAbstractSpinBox*>(object) != nullptr;
        for (const char* property : Properties) {
            if (isField && qstrcmp(property, "text") == 0)
                continue;
            if (object->metaObject()->indexOfProperty(property) >= 0)
                // What follows a tab is a key.
                add(object, property, object->property(property).toString().section(QLatin1Char('\t'), 0, 0));
        }
    }

    void readModel(const QObject* owner, const QAbstractItemModel* model, const QModelIndex& parent)
    {
        const auto* tree = qobject_cast<const QTreeView*>(owner);
        for (int row = 0; row < model->rowCount(parent); ++row) {
            for (int column = 0; column < model->columnCount(parent); ++column) {
                if (tree != nullptr && tree->isColumnHidden(column))
                    continue;
                const QModelIndex index = model->index(row, column, parent);
                for (const int role :
                     {Qt::DisplayRole, Qt::ToolTipRole, Qt::StatusTipRole, Qt::WhatsThisRole})
                    add(owner, "row", index.data(role).toString());
                if (column == 0)
                    readModel(owner, model, index);
            }
        }
    }

    void readView(const QAbstractItemView* view)
    {
        if (view->model() == nullptr || qobject_cast<const QHeaderView*>(view) != nullptr)
            return;
        readModel(view, view->model(), view->rootIndex());
        const QList<QHeaderView*> headers = view->findChildren<QHeaderView*>();
        for (const QHeaderView* header : headers) {
            for (int section = 0; section < header->count() && !header->isHidden(); ++section)
                add(view, "header", view->model()->headerData(section, header->orientation()).toString());
        }
    }

    void readWidget(const QWidget* widget)
    {
        readProperties(widget);
        const QList<QAction*> actions = widget->actions();
        for (const QAction* action : actions) {
            if (!action->isSeparator())
                readProperties(action);
        }
        if (const auto* combo = qobject_cast<const QComboBox*>(widget))
            readModel(combo, combo->model(), {});
        else if (const auto* view = qobject_cast<const QAbstractItemView*>(widget))
            readView(view);
        else if (const auto* bar = qobject_cast<const QStatusBar*>(widget))
            add(bar, "message", bar->currentMessage());
        else if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
            for (int tab = 0; tab < tabs->count(); ++tab) {
                add(tabs, "tab", tabs->tabText(tab));
                add(tabs, "tab", tabs->tabToolTip(tab));
            }
        } else if (const auto* dialog = qobject_cast<const QFileDialog*>(widget)) {
            add(dialog, "filters", dialog->nameFilters().join(QStringLiteral(";;")));
        }
    }

private:
    void add(const QObject* object, const char* what, const QString& text)
    {
        if (!text.isEmpty())
            m_texts.append({pathOf(object) + QLatin1Char(' ') + QLatin1String(what), text});
    }

    QVector<zoShownTexts::Text>& m_texts;
};

// The insides of a file dialog belong to Qt and show files.
bool isInsideFileDialog(const QWidget* widget)
{
    for (const QWidget* parent = widget->parentWidget(); parent != nullptr; parent = parent->parentWidget()) {
        if (qobject_cast<const QFileDialog*>(parent) != nullptr)
            return true;
    }
    return false;
}
} // namespace

QString zoMarkingTranslator::translate(const char* context, const char* sourceText,
                                       const char* disambiguation, int n) const
{
    Q_UNUSED(context)
    Q_UNUSED(disambiguation)
    Q_UNUSED(n)
    if (sourceText == nullptr || *sourceText == '\0')
        return {};
    return Open + QString::fromUtf8(sourceText) + Close;
}

bool zoMarkingTranslator::isEmpty() const
{
    return false;
}

QString zoMarkingTranslator::unmarked(const QString& text)
{
    QString rest;
    int depth = 0;
    for (const QChar c : text) {
        if (c == Open)
            ++depth;
        else if (c == Close)
            --depth;
        else if (depth == 0)
            rest += c;
    }
    return rest;
}

QVector<zoShownTexts::Text> zoShownTexts::of(QWidget* window)
{
    QVector<Text> texts;
    Reader reader(texts);
    reader.readWidget(window);
    const QList<QWidget*> widgets = window->findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        if (!isInsideFileDialog(widget))
            reader.readWidget(widget);
    }
    return texts;
}
