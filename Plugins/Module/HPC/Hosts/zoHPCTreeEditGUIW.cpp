#include "zoHPCTreeEditGUIW.h"

#include "ui_zoHPCTreeEditGUIW.h"
#include "zoHPCOption.h"
#include "zoHPCOptionValues.h"
#include "zoHPCTreeItem.h"
#include "zoHPCWheelGuard.h"
#include "zoText.h"

#include <QScopedValueRollback>

#include <zoClusterTags.h>
#include <zoLog.h>

#include <algorithm>

namespace
{
enum Page { MasterPage, NetworkPage, NodePage };

// Read when neither a person nor the configuration chose a number.
constexpr int s_defaultParallelFrames = 2;
constexpr int s_defaultFrameQueueLength = 2;
constexpr int s_defaultSupersampling = 0;

template <std::size_t size>
void addRows(QComboBox* combo, const zoHPCComboRow (&rows)[size])
{
    for (const zoHPCComboRow& row : rows)
        combo->addItem(zoHPCTreeEditGUIW::tr(row.text), QString::fromLatin1(row.value));
}

QString flagText(bool on)
{
    return on ? zoText("true") : QString();
}
} // namespace

zoHPCTreeEditGUIW::zoHPCTreeEditGUIW(QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui_zoHPCTreeEditGUIW>())
{
    m_ui->setupUi(this);
    new zoHPCWheelGuard(this);
    fillComboRows();
    connectWidgets();
}

zoHPCTreeEditGUIW::~zoHPCTreeEditGUIW() = default;

void zoHPCTreeEditGUIW::setComboboxByData(QComboBox* combo, const QString& data)
{
    combo->setCurrentIndex(
        qMax(0, combo->findData(data, Qt::UserRole, Qt::MatchExactly | Qt::MatchCaseSensitive)));
}

QString zoHPCTreeEditGUIW::getDataFromCombobox(const QComboBox* combo)
{
    return combo->currentData().toString();
}

void zoHPCTreeEditGUIW::setIsRunning(bool running)
{
    m_ui->m_networkSettings->setEnabled(!running);
}

void zoHPCTreeEditGUIW::editName()
{
    const int page = m_ui->m_stackedEditPanel->currentIndex();
    if (item() == nullptr || page == MasterPage)
        return;
    QLineEdit* name = page == NodePage ? m_ui->m_hostName : m_ui->m_networkDescription;
    (page == NodePage ? m_ui->m_hostSettings : m_ui->m_networkSettings)->setCollapsed(false);
    name->setFocus(Qt::ShortcutFocusReason);
    name->selectAll();
}

void zoHPCTreeEditGUIW::setItem(zoHPCTreeItem* item)
{
    if (item == nullptr)
        return;
    m_watchedItem = item->watch();
    m_others.clear();
    m_isNameTyped = false;
    showSelection();

    const QScopedValueRollback<bool> filling(m_isFilling, true);
    if (item->isMaster())
        showMaster();
    else if (item->isNetwork())
        showNetwork();
    else if (item->isNode())
        showNode();
}

void zoHPCTreeEditGUIW::setSelection(const std::vector<zoHPCTreeItem*>& items)
{
    m_others.clear();
    const zoHPCTreeItem* const shown = item();
    if (shown != nullptr && std::find(items.cbegin(), items.cend(), shown) != items.cend()) {
        for (zoHPCTreeItem* other : items) {
            if (other != shown && other->isNode() == shown->isNode() &&
                other->isNetwork() == shown->isNetwork())
                m_others.push_back(other->watch());
        }
    }
    showSelection();
}

void zoHPCTreeEditGUIW::showSelection()
{
    m_ui->m_selectionNote->setVisible(!m_others.empty());
    const QScopedValueRollback<bool> filling(m_isFilling, true);
    const zoHPCTreeItem* const shown = item();
    if (shown == nullptr)
        return;
    const int count = int(m_others.size()) + 1;
    if (shown->isNode()) {
        m_ui->m_selectionNote->setText(
            tr("Changes apply to all %1 selected compute nodes; the name is that of %2 alone.")
                .arg(QString::number(count), shown->hostName()));
        showMixed(m_ui->m_hostEnabled, &zoHPCTreeItem::isEnabled);
        showMixed(m_ui->m_renderNode, &zoHPCTreeItem::isRenderNode);
    } else if (shown->isNetwork()) {
        m_ui->m_selectionNote->setText(
            tr("Changes apply to all %1 selected networks; the description is that of this one alone.")
                .arg(count));
        showMixed(m_ui->m_networkEnabled, &zoHPCTreeItem::isEnabled);
        showMixed(m_ui->m_encrypted, &zoHPCTreeItem::isEncrypted);
    }
}

void zoHPCTreeEditGUIW::showMixed(QCheckBox* box, bool (zoHPCTreeItem::*is)() const)
{
    const bool isOn = (item()->*is)();
    const bool isMixed = std::any_of(m_others.cbegin(), m_others.cend(), [&](const auto& watched) {
        const std::shared_ptr<zoHPCTreeItem> other = watched.lock();
        return other && ((*other).*is)() != isOn;
    });
    box->setTristate(isMixed);
    box->setCheckState(isMixed ? Qt::PartiallyChecked : isOn ? Qt::Checked : Qt::Unchecked);
}

// Whether there was one that it changed. `change` tells that.
template <class Change>
bool zoHPCTreeEditGUIW::changeOthers(Change change)
{
    bool hasChanged = false;
    for (const std::weak_ptr<zoHPCTreeItem>& watched : m_others) {
        if (const std::shared_ptr<zoHPCTreeItem> other = watched.lock())
            hasChanged = change(*other) || hasChanged;
    }
    return hasChanged;
}

// A box that stands between on and off counts as on for Qt: turning it on is no toggling then.
void zoHPCTreeEditGUIW::connectBox(QCheckBox* box, const std::function<void(bool)>& change)
{
    connect(box, &QCheckBox::toggled, this, change);
    connect(box, &QCheckBox::stateChanged, this, [this, box, change](int state) {
        if (m_isFilling || !box->isTristate() || state != Qt::Checked)
            return;
        box->setTristate(false);
        change(true);
    });
}

void zoHPCTreeEditGUIW::setNetworkType(int index)
{
    writeRow(zoHPCOption::NetworkType, m_ui->m_networkTypeSelection, index);
    // Lays the page out anew.
    m_ui->m_networkOptionsFillFrame->hide();
    m_ui->m_networkOptionsFillFrame->show();
}

void zoHPCTreeEditGUIW::ethernetSpeedChanged(int index)
{
    writeRow(zoHPCOption::LinkSpeed, m_ui->m_networkSpeedSelection, index);
}

void zoHPCTreeEditGUIW::setSceneCompression(int index)
{
    if (writeRow(zoHPCOption::SceneCompression, m_ui->m_sceneCompression, index))
        emit sceneCompressionChanged(item()->getOption(zoHPCOption::SceneCompression));
}

void zoHPCTreeEditGUIW::setImageCompression(int index)
{
    if (writeRow(zoHPCOption::ImageCompression, m_ui->m_imageCompression, index))
        emit imageCompressionChanged(item()->getOption(zoHPCOption::ImageCompression));
}

void zoHPCTreeEditGUIW::setStartStopAction(int index)
{
    if (writeRow(zoHPCOption::StartStopAction, m_ui->m_startStopAction, index))
        emit startStopActionsChanged(index == 1, index == 2, index == 3);
}

void zoHPCTreeEditGUIW::setParallelFrames(int index)
{
    if (writeRow(zoHPCOption::ParallelFrames, m_ui->m_parallelFrames, index))
        emit parallelFramesChanged(
            item()->getIntOption(zoHPCOption::ParallelFrames, s_defaultParallelFrames));
}

void zoHPCTreeEditGUIW::setQueueLength(int index)
{
    if (writeRow(zoHPCOption::FramePipelineLength, m_ui->m_frameQueueLength, index))
        emit frameQueueLengthChanged(
            item()->getIntOption(zoHPCOption::FramePipelineLength, s_defaultFrameQueueLength));
}

void zoHPCTreeEditGUIW::setStillSupersampling(int index)
{
    if (writeRow(zoHPCOption::StillFrameSupersampling, m_ui->m_stillFrameSupersampling, index))
        emit stillFrameSupersamplingChanged(
            item()->getIntOption(zoHPCOption::StillFrameSupersampling, s_defaultSupersampling));
}

void zoHPCTreeEditGUIW::servicePortChanged(int port)
{
    if (m_isFilling)
        return; // what is merely shown stays as it is, also a port that the spin box cannot show
    write(zoHPCOption::ServicePort,
          port == zoClusterTags::DefaultServicePort ? QString() : QString::number(port));
}

void zoHPCTreeEditGUIW::setEncrypted(bool encrypted)
{
    if (!m_isFilling)
        write(zoHPCOption::Encrypted, flagText(encrypted));
}

void zoHPCTreeEditGUIW::setHomogeneous(bool homogeneous)
{
    if (!m_isFilling)
        write(zoHPCOption::Homogeneous, flagText(homogeneous));
}

void zoHPCTreeEditGUIW::fillComboRows()
{
    namespace Tables = zoHPCOptionValues;
    addRows(m_ui->m_networkTypeSelection, Tables::NetworkTypes);
    addRows(m_ui->m_networkSpeedSelection, Tables::NetworkSpeeds);
    addRows(m_ui->m_sceneCompression, Tables::SceneCompressions);
    addRows(m_ui->m_imageCompression, Tables::ImageCompressions);
    addRows(m_ui->m_startStopAction, Tables::StartStopActions);
    addRows(m_ui->m_stillFrameSupersampling, Tables::StillSupersamplings);
    addRows(m_ui->m_parallelFrames, Tables::FrameCounts);
    addRows(m_ui->m_frameQueueLength, Tables::FrameCounts);
}

void zoHPCTreeEditGUIW::connectWidgets()
{
    const auto connectCombo = [this](QComboBox* combo, void (zoHPCTreeEditGUIW::*slot)(int)) {
        connect(combo, QOverload<int>::of(&QComboBox::currentIndexChanged), this, slot);
    };
    connectCombo(m_ui->m_networkTypeSelection, &zoHPCTreeEditGUIW::setNetworkType);
    connectCombo(m_ui->m_networkSpeedSelection, &zoHPCTreeEditGUIW::ethernetSpeedChanged);
    connectCombo(m_ui->m_sceneCompression, &zoHPCTreeEditGUIW::setSceneCompression);
    connectCombo(m_ui->m_imageCompression, &zoHPCTreeEditGUIW::setImageCompression);
    connectCombo(m_ui->m_startStopAction, &zoHPCTreeEditGUIW::setStartStopAction);
    connectCombo(m_ui->m_parallelFrames, &zoHPCTreeEditGUIW::setParallelFrames);
    connectCombo(m_ui->m_frameQueueLength, &zoHPCTreeEditGUIW::setQueueLength);
    connectCombo(m_ui->m_stillFrameSupersampling, &zoHPCTreeEditGUIW::setStillSupersampling);
    m_ui->m_servicePort->setValue(zoClusterTags::DefaultServicePort);
    connect(m_ui->m_servicePort, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &zoHPCTreeEditGUIW::servicePortChanged);
    connect(m_ui->m_homogeneousCluster, &QCheckBox::toggled, this, &zoHPCTreeEditGUIW::setHomogeneous);

    connectBoxes();
    connectNames();
}

void zoHPCTreeEditGUIW::connectBoxes()
{
    // What these show is what the item has, so showing another item leaves them with nothing to write: a
    // network of ten thousand nodes is not drawn anew because somebody looks at it.
    const auto setEnabledOption = [this](bool enabled) {
        if (m_isFilling || item() == nullptr)
            return;
        item()->setIsEnabled(enabled);
        changeOthers([enabled](zoHPCTreeItem& other) {
            const bool isChange = other.isEnabled() != enabled;
            if (isChange)
                other.setIsEnabled(enabled);
            return isChange;
        });
        emit changed();
    };
    connectBox(m_ui->m_encrypted, [this](bool encrypted) { setEncrypted(encrypted); });
    connectBox(m_ui->m_networkEnabled, setEnabledOption);
    connectBox(m_ui->m_hostEnabled, setEnabledOption);
    connectBox(m_ui->m_renderNode, [this](bool renderNode) {
        if (m_isFilling || item() == nullptr)
            return;
        item()->setIsRenderNode(renderNode);
        changeOthers([renderNode](zoHPCTreeItem& other) {
            const bool isChange = other.isRenderNode() != renderNode;
            other.setIsRenderNode(renderNode);
            return isChange;
        });
        emit changed();
    });
}

void zoHPCTreeEditGUIW::connectNames()
{
    // Told before the text is the name.
    connect(m_ui->m_hostName, &QLineEdit::textEdited, this, [this] {
        if (item() != nullptr && m_renameListener && !std::exchange(m_isNameTyped, true))
            m_renameListener(item());
    });
    connect(m_ui->m_hostName, &QLineEdit::editingFinished, this, [this] { m_isNameTyped = false; });
    connect(m_ui->m_hostName, &QLineEdit::textChanged, this, [this](const QString& name) {
        if (item() == nullptr)
            return;
        if (!m_isFilling) {
            item()->setHostName(name);
            showSelection(); // names it
            emit changed();
        }
        emit hostChanged();
    });
    connect(m_ui->m_networkDescription, &QLineEdit::textChanged, this, [this](const QString& description) {
        if (m_isFilling || item() == nullptr)
            return;
        item()->setOption(zoHPCOption::Description, description);
        emit changed();
    });
}

void zoHPCTreeEditGUIW::showMaster()
{
    m_ui->m_stackedEditPanel->setCurrentIndex(MasterPage);
    showOption(m_ui->m_sceneCompression, zoHPCOption::SceneCompression,
               &zoHPCTreeEditGUIW::setSceneCompression);
    showOption(m_ui->m_imageCompression, zoHPCOption::ImageCompression,
               &zoHPCTreeEditGUIW::setImageCompression);
    showOption(m_ui->m_startStopAction, zoHPCOption::StartStopAction, &zoHPCTreeEditGUIW::setStartStopAction);
    showOption(m_ui->m_stillFrameSupersampling, zoHPCOption::StillFrameSupersampling,
               &zoHPCTreeEditGUIW::setStillSupersampling);
    showOption(m_ui->m_frameQueueLength, zoHPCOption::FramePipelineLength,
               &zoHPCTreeEditGUIW::setQueueLength);
    showOption(m_ui->m_parallelFrames, zoHPCOption::ParallelFrames, &zoHPCTreeEditGUIW::setParallelFrames);
    m_ui->m_homogeneousCluster->setChecked(item()->getOption(zoHPCOption::Homogeneous) == flagText(true));
}

void zoHPCTreeEditGUIW::showNetwork()
{
    m_ui->m_stackedEditPanel->setCurrentIndex(NetworkPage);
    m_ui->m_networkEnabled->setChecked(item()->isEnabled());
    showOption(m_ui->m_networkTypeSelection, zoHPCOption::NetworkType, &zoHPCTreeEditGUIW::setNetworkType);
    showOption(m_ui->m_networkSpeedSelection, zoHPCOption::LinkSpeed,
               &zoHPCTreeEditGUIW::ethernetSpeedChanged);
    m_ui->m_networkDescription->setText(item()->getOption(zoHPCOption::Description));
    setNetworkType(m_ui->m_networkTypeSelection->currentIndex());

    int port = item()->getIntOption(zoHPCOption::ServicePort, zoClusterTags::DefaultServicePort);
    if (port < m_ui->m_servicePort->minimum() || port > m_ui->m_servicePort->maximum())
        port = zoClusterTags::DefaultServicePort;
    m_ui->m_servicePort->setValue(port);
    m_ui->m_encrypted->setChecked(item()->isEncrypted());
}

void zoHPCTreeEditGUIW::showNode()
{
    m_ui->m_stackedEditPanel->setCurrentIndex(NodePage);
    m_ui->m_hostEnabled->setChecked(item()->isEnabled());
    m_ui->m_renderNode->setChecked(item()->isRenderNode());
    m_ui->m_hostName->setText(item()->hostName()); // last: it is announced
}

void zoHPCTreeEditGUIW::showOption(QComboBox* combo, const QString& option,
                                   void (zoHPCTreeEditGUIW::*slot)(int))
{
    const QString value = item()->getOption(option);
    if (combo->findData(value, Qt::UserRole, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0) {
        zoLog::info(
            "%s", qUtf8Printable(
                      tr("Option \"%1\" of %2: the unknown value \"%3\" is replaced by the default.")
                          .arg(option, item()->isMaster() ? tr("the cluster") : item()->getItemId(), value)));
        if (m_replacementListener)
            m_replacementListener(item(), option, value);
    }
    setComboboxByData(combo, value);
    // A value without a row is replaced also when the combo box stood on row 0 already and thus had no
    // change.
    if (item()->getOption(option) != getDataFromCombobox(combo))
        (this->*slot)(combo->currentIndex());
}

bool zoHPCTreeEditGUIW::write(const QString& option, const QString& value)
{
    if (item() == nullptr)
        return false;
    // What is merely shown leaves the item as it is, without even an empty option of that name.
    const bool isChange = item()->getOption(option) != value;
    if (!m_isFilling || isChange)
        item()->setOption(option, value);
    const bool othersChanged = !m_isFilling && changeOthers([&](zoHPCTreeItem& other) {
        const bool differs = other.getOption(option) != value;
        if (differs)
            other.setOption(option, value);
        return differs;
    });
    if (isChange || othersChanged)
        emit changed();
    return true;
}

bool zoHPCTreeEditGUIW::writeRow(const QString& option, const QComboBox* combo, int index)
{
    return write(option, combo->itemData(index).toString());
}
