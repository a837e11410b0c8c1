#include "zoFuzzOutline.h"
#include "zoFuzzing.h"

#include <zoClusterTags.h>
#include <zoHPCDisplayGUII.h>
#include <zoHPCDisplaySetup.h>
#include <zoHPCDisplayTrees.h>
#include <zoHPCDocumentText.h>
#include <zoHPCLayout.h>
#include <zoHPCProblems.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCReview.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCViewportItem.h>

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDomDocument>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QLineEdit>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <iterator>

// The display-setup dialog under all that can be done to it, an operation for each byte: rows hang where they
// may, the text loads to itself, the problems are those of a fresh look, and Cancel brings back what was there.

namespace
{
// Where the trees are made small again, and how many operations there are at most.
constexpr int MaximumRows = 150;
constexpr int MaximumOperations = 60;

const char* const s_setups[] = {
    "cluster version=1\n display eyeseparation=65 user=1\n",
    "cluster version=1\n projection name=Wall type=wall rows=2 columns=2 overlapx=10 overlapy=4\n"
    " projection name=P type=plane x2=1 x3=1 y3=1\n display eyeseparation=65 user=1\n"
    "  window node=a screen=0 width=100 height=100\n   viewport projection=Wall~row:1~col:2 eye=left\n"
    "   viewport projection=P eye=right\n  window node=b\n   viewport projection=Wall~row:2~col:1\n",
    "cluster version=1\n projection name=Cave type=cave cavewidth=3000 caveheight=2500 cavedepth=2000"
    " leftwall=true frontwall=true rows=1 columns=2\n display user=2\n  window node=a fullscreen=true\n"
    "   viewport projection=Cave position=left-half\n display\n  window\n",
    "cluster\n projection name=Old type=wall rows=3 columns=1\n display\n  window node=a\n"
    "   viewport projection=Old~row:1~col:1 x1=10 y1=10 x2=600 y2=400\n",
};
const char* const s_values[] = {
    "",     "0",     "1",     "2",    "3",    "-1",   "12.6", "1e20", "0.5",
    "true", "left",  "right", "mono", "Cave", "Wall", "P",    "wall", "powerwall",
    "cave", "plane", "tile",  "dome", "63,5", "a",    "b 2",  "fill", "Wall row:1 col:2"};

// The dialog with its hosts, kept between inputs and never shown but for Cancel.
class Editor
{
public:
    Editor()
    {
        m_dialog.setAttribute(Qt::WA_DontShowOnScreen);
        m_hosts.setHostString(QStringLiteral("a b b"));
        m_dialog.setHostTree(&m_hosts);
        m_projections = m_dialog.findChild<QTreeWidget*>(QStringLiteral("m_projectionTree"));
        m_outputs = m_dialog.findChild<QTreeWidget*>(QStringLiteral("m_displayTree"));
        m_panels = m_dialog.findChild<QStackedWidget*>(QStringLiteral("m_panels"));
    }

    void run(const std::uint8_t* data, std::size_t size)
    {
        m_data = data;
        m_end = data + size;
        m_dialog.setIsRunning(false);
        load(0);
        for (int i = 0; i < MaximumOperations && m_data != m_end; ++i) {
            if (m_dialog.getProjectionItems().size() + m_dialog.getWindowItems().size() > MaximumRows)
                load(next());
            perform(next());
            checkRows();
            if (i % 12 == 11)
                check();
        }
        m_dialog.setIsRunning(false);
        check();
        if (m_dialog.isVisible())
            cancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

private:
    int next() { return m_data == m_end ? 0 : *m_data++; }
    QString value() { return QString::fromUtf8(s_values[std::size_t(next()) % std::size(s_values)]); }

    void load(int which)
    {
        const QString text =
            zoFuzzOutline::documentOf(QString::fromUtf8(s_setups[std::size_t(which) % std::size(s_setups)]));
        QDomDocument document;
        zoHPCDocumentText::parse(text, document);
        m_dialog.loadFromXML(document);
    }

    static QString textOf(const zoHPCDisplaySetup& setup)
    {
        QDomDocument document;
        QDomElement root = document.createElement(zoClusterTags::Cluster);
        root.setAttribute(zoClusterTags::VersionAttribute, zoClusterTags::Version);
        document.appendChild(root);
        setup.saveToXML(document);
        return zoHPCDocumentText::toText(document);
    }
    QString text() const { return textOf(m_dialog.setup()); }

    void choose(QTreeWidget* tree)
    {
        QList<QTreeWidgetItem*> rows{nullptr};
        for (QTreeWidgetItemIterator it(tree); *it != nullptr; ++it)
            rows << *it;
        tree->setCurrentItem(rows.at(next() % rows.size()));
    }

    // A value of a row of the top level, as scripts of a host may set it.
    void setProjectionValue()
    {
        auto* const item = dynamic_cast<zoHPCProjectionItem*>(m_projections->currentItem());
        const int column = next() % zoHPCProjectionItem::ColumnCount;
        const QString text = value();
        if (item != nullptr && item->parent() == nullptr && column != zoHPCProjectionItem::Identifier)
            item->setData(column, Qt::EditRole, text);
    }

    void setOutputValue()
    {
        auto* const item = dynamic_cast<zoHPCTreeWidgetItem*>(m_outputs->currentItem());
        if (item == nullptr)
            return;
        const zoHPCTreeWidgetItem::ColumnMap& columns = item->getColumns();
        const auto column = std::next(columns.begin(), next() % int(columns.size()));
        const QString text = value();
        if (column->second != QLatin1String("projection"))
            item->setData(column->first, Qt::EditRole, text);
    }

    // What the panel of the current row offers, by hand.
    void useField()
    {
        const QList<QWidget*> fields = m_panels->currentWidget()->findChildren<QWidget*>();
        QList<QWidget*> enabled;
        for (QWidget* const field : fields) {
            const bool isField = qobject_cast<QAbstractSpinBox*>(field) || qobject_cast<QComboBox*>(field) ||
                                 qobject_cast<QAbstractButton*>(field) || qobject_cast<QLineEdit*>(field);
            const bool isPart = qobject_cast<QAbstractSpinBox*>(field->parentWidget()) ||
                                qobject_cast<QComboBox*>(field->parentWidget());
            if (isField && !isPart && field->isEnabledTo(&m_dialog))
                enabled << field;
        }
        if (enabled.isEmpty())
            return;
        QWidget* const field = enabled.at(next() % enabled.size());
        if (auto* const number = qobject_cast<QSpinBox*>(field))
            number->setValue(next() % 7 - 1);
        else if (auto* const real = qobject_cast<QDoubleSpinBox*>(field))
            real->setValue(next() / 4.0 - 8.0);
        else if (auto* const choice = qobject_cast<QComboBox*>(field))
            choice->setCurrentIndex(next() % qMax(1, choice->count()));
        else if (auto* const button = qobject_cast<QAbstractButton*>(field))
            button->click();
        else if (auto* const line = qobject_cast<QLineEdit*>(field))
            line->setText(value());
    }

    // A tile that is deleted comes back whenever its wall is laid out, as when the text is read.
    void deleteItem()
    {
        const QList<QTreeWidgetItem*> chosen = m_projections->selectedItems();
        if (chosen.isEmpty() || chosen.constFirst()->parent() == nullptr)
            m_dialog.deleteItem();
    }

    void open()
    {
        if (m_dialog.isVisible())
            return;
        // Opening takes nodes away that the cluster does not have, and Cancel brings them back.
        m_before = text();
        m_dialog.open({QStringLiteral("a"), QStringLiteral("b")});
    }

    void cancel()
    {
        m_dialog.reject();
        zoFuzzing::requireSame(text(), m_before, "Cancel brings back what was there");
    }

    void perform(int operation)
    {
        switch (operation % 20) {
        case 0:
        case 1:
            return choose(m_projections);
        case 2:
        case 3:
            return choose(m_outputs);
        case 4:
            return m_dialog.addProjection();
        case 5:
            return m_dialog.addDisplay();
        case 6:
            return m_dialog.addWindow();
        case 7:
            return m_dialog.addViewport();
        case 8:
            return deleteItem();
        case 9:
            return m_dialog.copyProjection();
        case 10:
            return m_dialog.copyDisplay();
        case 11:
            return m_dialog.pasteProjection();
        case 12:
            return m_dialog.pasteDisplay();
        case 13:
            return m_dialog.convertToPlanes();
        case 14:
            return setProjectionValue();
        case 15:
            return setOutputValue();
        case 16:
            return useField();
        case 17:
            return performOnAll(next());
        case 18:
            return m_dialog.isVisible() ? cancel() : open();
        default:
            return m_dialog.isVisible() ? m_dialog.accept() : load(next());
        }
    }

    void performOnAll(int operation)
    {
        switch (operation % 6) {
        case 0:
            return m_dialog.setEyeSeparation(float(next()) / 2);
        case 1:
            return m_dialog.setZeroParallax(float(next()) * 16);
        case 2:
            return m_dialog.setIsRunning(next() % 2 == 1);
        case 3:
            return m_dialog.setNodeNames({QStringLiteral("a"), QStringLiteral("b 2")});
        case 4:
            return fixProblem();
        default:
            return m_dialog.apply();
        }
    }

    void fixProblem()
    {
        const std::vector<zoHPCProblem> problems = m_dialog.review().problems();
        for (const zoHPCProblem& problem : problems) {
            // Those of the host tree are taken back by another part of the dialog.
            if (problem.hasFix() && !problem.fixesHosts()) {
                problem.fix();
                m_dialog.correctProjectionViewportsAssignments();
                m_dialog.review().noteChange();
                return;
            }
        }
    }

    // Displays at the top, windows below them, viewports below these.
    void checkRows() const
    {
        for (QTreeWidgetItemIterator it(m_outputs); *it != nullptr; ++it) {
            const QTreeWidgetItem* const parent = (*it)->parent();
            const bool isInPlace = zoHPCDisplayTrees::isViewport(*it)
                                       ? parent != nullptr && zoHPCDisplayTrees::isPlainWindow(parent)
                                   : zoHPCDisplayTrees::isPlainWindow(*it)
                                       ? parent != nullptr && zoHPCDisplayTrees::isPlainDisplay(parent)
                                       : parent == nullptr && zoHPCDisplayTrees::isPlainDisplay(*it);
            zoFuzzing::require(isInPlace, "rows hang where they may", (*it)->text(0));
        }
    }

    void check()
    {
        const QString written = text();
        QDomDocument document;
        zoFuzzing::require(zoHPCDocumentText::parse(written, document), "what is written is read", written);
        zoHPCDisplaySetup fresh;
        fresh.loadFromXML(document);
        zoFuzzing::requireSame(textOf(fresh), written, "a text that was written loads to itself");

        QStringList names;
        const QList<zoHPCProjectionItem*> projections = m_dialog.getProjectionItems();
        for (const zoHPCProjectionItem* projection : projections)
            names << projection->getString(zoHPCProjectionItem::Name);
        zoFuzzing::require(!names.contains(m_dialog.getUniqueProjectionName()), "a new name is new");
        const QList<zoHPCViewportItem*> viewports = m_dialog.getViewportItems();
        for (const zoHPCViewportItem* viewport : viewports) {
            const QString shown = viewport->getString(zoHPCViewportItem::Projection);
            zoFuzzing::require(shown.isEmpty() || names.contains(shown), "viewports show what there is",
                               shown);
        }

        // What shows nothing shows a projection without a name with the next reading.
        if (names.contains(QString()))
            return;
        const zoHPCLayout layout(fresh, m_hosts.master());
        zoFuzzing::requireSame(told(m_dialog.review().problems()), told(zoHPCProblems::find(layout)),
                               "problems are those of a fresh look");
    }

    static QString told(const std::vector<zoHPCProblem>& problems)
    {
        QString text;
        for (const zoHPCProblem& problem : problems)
            text += zoHPCProblem::kindName(problem.kind) + QLatin1String(": ") + problem.message +
                    QLatin1Char('\n');
        return text;
    }

    zoHPCTreeGUIW m_hosts;
    zoHPCDisplayGUII m_dialog;
    QTreeWidget* m_projections = nullptr; // not owned, as the next two
    QTreeWidget* m_outputs = nullptr;
    QStackedWidget* m_panels = nullptr;
    QString m_before; // when the dialog was opened
    const std::uint8_t* m_data = nullptr;
    const std::uint8_t* m_end = nullptr;
};
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Editor* const editor = new Editor;
    editor->run(data, size);
    return 0;
}
