#pragma once

#include "zoNodeClusterService.h"
#include "zoParaViewService.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;
class zoPreferencesService;

// The preferences page of the host's cluster services: what sessions run on, how servers are started on other
// machines, and the memory that each node needs.
class zoHostClusterPage final : public QWidget
{
    Q_OBJECT

public:
    // Registers the page and hands the stored values to the service. Neither is owned; both outlive the page.
    zoHostClusterPage(zoPreferencesService* preferences, zoHostClusterService* cluster);
    ~zoHostClusterPage() override;

    // "nodes", "paraview" or "local"; what runs now stays until the next start of the program.
    static QString storedEngine(zoPreferencesService* preferences);
    // The default one where what is stored cannot be used; the log says so.
    static zoNodeClusterService::Launch storedLaunch(zoPreferencesService* preferences);
    static zoParaViewService::Launch storedParaView(zoPreferencesService* preferences);
    static bool storedEndsWithLostNode(zoPreferencesService* preferences);

private:
    static int storedMebibytes(zoPreferencesService* preferences);
    void createParaViewFields();
    void show();
    void save();
    void restoreDefaults();
    void useStored();

    zoPreferencesService* m_preferences;
    zoHostClusterService* m_cluster;
    QComboBox* m_engine;
    QLineEdit* m_launch;
    QLineEdit* m_program;
    QLineEdit* m_paraView;
    QSpinBox* m_port;
    QComboBox* m_clients;
    QLineEdit* m_reverseClient;
    QCheckBox* m_endsWithLostNode;
    QSpinBox* m_memoryPerNode;
};
