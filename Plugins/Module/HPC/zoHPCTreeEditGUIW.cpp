#include "zoHPCTreeEditGUIW.h"

#include "ui_zoHPCTreeEditGUIW.h"
#include "zoHPCTreeItem.h"

zoHPCTreeEditGUIW::zoHPCTreeEditGUIW(QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui_zoHPCTreeEditGUIW>())
{
    m_ui->setupUi(this);
}

zoHPCTreeEditGUIW::~zoHPCTreeEditGUIW() = default;

bool zoHPCTreeEditGUIW::setComboboxByData(QComboBox* combo, const QString& data)
{
    const int row = combo->findData(data, Qt::UserRole, Qt::MatchExactly | Qt::MatchCaseSensitive);
    combo->setCurrentIndex(qMax(row, 0));
    return row >= 0;
}

QString zoHPCTreeEditGUIW::getDataFromCombobox(const QComboBox* combo)
{
    return combo->currentData().toString();
}

void zoHPCTreeEditGUIW::setIsRunning(bool running)
{
    m_ui->m_networkSettings->setEnabled(!running);
}

void zoHPCTreeEditGUIW::setItem(zoHPCTreeItem* item)
{
    if (item == nullptr)
        return;
    m_item = item;
    m_ui->m_stackedEditPanel->setCurrentIndex(item->isMaster() ? 0 : item->isNetwork() ? 1 : 2);
}

void zoHPCTreeEditGUIW::setNetworkType(int) {}
void zoHPCTreeEditGUIW::ethernetSpeedChanged(int) {}
void zoHPCTreeEditGUIW::setSceneCompression(int) {}
void zoHPCTreeEditGUIW::setImageCompression(int) {}
void zoHPCTreeEditGUIW::setStartStopAction(int) {}
void zoHPCTreeEditGUIW::setParallelFrames(int) {}
void zoHPCTreeEditGUIW::setQueueLength(int) {}
void zoHPCTreeEditGUIW::setStillSupersampling(int) {}
void zoHPCTreeEditGUIW::servicePortChanged(int) {}
void zoHPCTreeEditGUIW::setEncrypted(bool) {}
void zoHPCTreeEditGUIW::setHomogeneous(bool) {}
