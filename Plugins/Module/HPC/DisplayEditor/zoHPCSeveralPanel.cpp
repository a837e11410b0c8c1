#include "zoHPCSeveralPanel.h"

#include "zoHPCDisplayTables.h"
#include "zoHPCNumberExpression.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
using Window = zoHPCWindowItem;
using Viewport = zoHPCViewportItem;

QString shared(const char* source)
{
    return QCoreApplication::translate("zoHPCDisplayGUII", source);
}

// The text of a column where all rows have the same one; null where they differ.
template <class Item>
QString common(const std::vector<Item*>& items, int column)
{
    if (items.empty())
        return {};
    const QString first = items.front()->getString(column);
    const bool isCommon = std::all_of(items.begin(), items.end(),
                                      [&](const Item* item) { return item->getString(column) == first; });
    return !isCommon ? QString() : first.isNull() ? QString::fromLatin1("") : first;
}

void choose(QComboBox& combo, const QString& value)
{
    const QSignalBlocker blocker(combo);
    combo.setCurrentIndex(value.isNull() ? -1 : combo.findData(value));
}

QComboBox* newCombo(const char* name)
{
    auto* const combo = new QComboBox;
    combo->setObjectName(QString::fromLatin1(name));
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(8);
    return combo;
}

void addRow(QGridLayout& grid, int row, const QString& text, QWidget* field)
{
    auto* const label = new QLabel(text);
    label->setBuddy(field);
    grid.addWidget(label, row, 0);
    grid.addWidget(field, row, 1, 1, 3);
}
} // namespace

zoHPCSeveralPanel::zoHPCSeveralPanel(QAbstractItemModel* nodes, QWidget* parent)
    : QWidget(parent), m_summary(new QLabel)
{
    setObjectName(QString::fromLatin1("m_severalPage"));
    m_summary->setObjectName(QString::fromLatin1("m_severalSummary"));
    m_summary->setWordWrap(true);
    m_duplicate = new QPushButton(tr("Duplicate to next nodes"));
    m_duplicate->setObjectName(QString::fromLatin1("m_severalDuplicate"));
    m_duplicate->setToolTip(tr("Copies the windows to the nodes that follow theirs; each shows the tile that "
                               "follows (Ctrl+D)"));
    m_duplicate->setAutoDefault(false);
    connect(m_duplicate, &QPushButton::clicked, this, &zoHPCSeveralPanel::duplicateClicked);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_summary);
    layout->addWidget(createWindows(nodes));
    m_viewportGroup = createViewports();
    layout->addWidget(m_viewportGroup);
    layout->addWidget(m_duplicate);
    layout->addStretch();
}

zoHPCSeveralPanel::~zoHPCSeveralPanel() = default;

QGroupBox* zoHPCSeveralPanel::createWindows(QAbstractItemModel* nodes)
{
    auto* const group = new QGroupBox(tr("All selected windows"));
    auto* const grid = new QGridLayout(group);
    m_nodes = newCombo("m_severalNodes");
    m_nodes->setModel(nodes);
    m_nodes->setToolTip(tr("The first window gets this node, the others those that follow it; windows of one "
                           "node stay together"));
    addRow(*grid, 0, tr("Nodes from"), m_nodes);
    m_screen = newCombo("m_severalScreen");
    for (const zoHPCDisplayTables::ComboRow& row : zoHPCDisplayTables::Screens)
        m_screen->addItem(shared(row.text), QString::fromLatin1(row.value));
    addRow(*grid, 1, shared("Screen"), m_screen);
    m_fullScreen = new QCheckBox(shared("Full screen"));
    m_fullScreen->setObjectName(QString::fromLatin1("m_severalFullScreen"));
    grid->addWidget(m_fullScreen, 2, 0, 1, 4);
    addRow(*grid, 3, shared("X"), addNumber(Window::X, tr("Left edges [pixel]")));
    addRow(*grid, 4, shared("Y"), addNumber(Window::Y, tr("Top edges [pixel]")));
    addRow(*grid, 5, shared("Width"), addNumber(Window::Width, tr("Widths [pixel]")));
    addRow(*grid, 6, shared("Height"), addNumber(Window::Height, tr("Heights [pixel]")));
    connect(m_nodes, QOverload<int>::of(&QComboBox::activated), this,
            [this] { emit nodesChosen(m_nodes->currentText()); });
    connect(m_screen, QOverload<int>::of(&QComboBox::activated), this,
            [this] { emit windowsChanged(Window::Screen, m_screen->currentData()); });
    connect(m_fullScreen, &QCheckBox::clicked, this, [this](bool isChecked) {
        m_fullScreen->setTristate(false);
        emit windowsChanged(Window::FullScreen, isChecked);
    });
    return group;
}

QGroupBox* zoHPCSeveralPanel::createViewports()
{
    auto* const group = new QGroupBox(tr("All their viewports"));
    auto* const grid = new QGridLayout(group);
    m_stereo = newCombo("m_severalStereo");
    for (const zoHPCDisplayTables::StereoMode& mode : zoHPCDisplayTables::Eyes)
        m_stereo->addItem(shared(mode.text), QString::fromLatin1(mode.value));
    addRow(*grid, 0, shared("Stereo"), m_stereo);
    connect(m_stereo, QOverload<int>::of(&QComboBox::activated), this,
            [this] { emit viewportsChanged(Viewport::Eye, m_stereo->currentData()); });
    return group;
}

QLineEdit* zoHPCSeveralPanel::addNumber(int column, const QString& name)
{
    auto* const field = new QLineEdit;
    field->setObjectName(QString::fromLatin1("m_severalNumber%1").arg(column));
    field->setAccessibleName(name);
    field->setToolTip(tr("Pixels, also as a sum: 5520/3"));
    field->setPlaceholderText(tr("different"));
    const size_t index = m_numbers.size();
    m_numbers.push_back({field, column, QString()});
    // While it is typed, as in the fields for one row.
    connect(field, &QLineEdit::textEdited, this, [this, column](const QString& text) {
        if (const std::optional<int> value = valueOf(column, text))
            emit windowsChanged(column, *value);
    });
    // What cannot be read changed nothing.
    connect(field, &QLineEdit::editingFinished, this,
            [this, index] { m_numbers[index].field->setText(m_numbers[index].common); });
    return field;
}

std::optional<int> zoHPCSeveralPanel::valueOf(int column, const QString& text)
{
    const std::optional<int> value = zoHPCNumberExpression::wholeNumber(text);
    const bool isSize = column == Window::Width || column == Window::Height;
    return value && isSize && *value < 0 ? std::nullopt : value;
}

void zoHPCSeveralPanel::show(const std::vector<zoHPCWindowItem*>& windows,
                             const std::vector<zoHPCViewportItem*>& viewports)
{
    m_summary->setText(tr("%1 windows, %2 viewports. What is set here is set for all of them.")
                           .arg(QString::number(windows.size()), QString::number(viewports.size())));
    const QString node = windows.empty() ? QString() : windows.front()->renderNode();
    {
        const QSignalBlocker blocker(m_nodes);
        m_nodes->setCurrentIndex(
            node.isEmpty() ? -1 : m_nodes->findText(node, Qt::MatchFixedString | Qt::MatchCaseSensitive));
    }
    choose(*m_screen, common(windows, Window::Screen));
    const QString fullScreen = common(windows, Window::FullScreen);
    const bool isMixed = fullScreen.isNull() && windows.size() > 1;
    m_fullScreen->setTristate(isMixed);
    m_fullScreen->setCheckState(isMixed                               ? Qt::PartiallyChecked
                                : fullScreen == QLatin1String("true") ? Qt::Checked
                                                                      : Qt::Unchecked);
    for (Number& number : m_numbers) {
        number.common = common(windows, number.column);
        // What a file does not say is 0.
        if (number.common.isEmpty() && !number.common.isNull())
            number.common = QString::number(0);
        // One that is typed into says what was typed.
        if (!number.field->hasFocus() || !number.field->isModified())
            number.field->setText(number.common);
    }
    choose(*m_stereo, common(viewports, Viewport::Eye));
    m_viewportGroup->setEnabled(!viewports.empty());
}

void zoHPCSeveralPanel::setCanDuplicate(bool can)
{
    m_duplicate->setEnabled(can);
}

QWidget* zoHPCSeveralPanel::firstField() const
{
    return m_nodes;
}
