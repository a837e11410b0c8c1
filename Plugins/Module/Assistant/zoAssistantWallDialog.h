#pragma once

#include "zoHPCWallBuilder.h"
#include "zoHPCWallPlan.h"

#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <vector>

class QDialogButtonBox;
class QLabel;
class zoAssistantFields;
class zoAssistantKindBox;
class zoAssistantNodeFields;
class zoAssistantRoomView;
class zoAssistantViewerFields;
class zoConfigurationService;

// Asks what a new wall is like, shows it while it is told, and puts its configuration in the place of the one that is
// open. What stands in the fields at first is what most walls have, and the nodes are those that are there.
class zoAssistantWallDialog final : public QDialog
{
    Q_OBJECT

public:
    // The service outlives the dialog, or goes; null takes nothing.
    explicit zoAssistantWallDialog(zoConfigurationService* configuration, QWidget* parent = nullptr);
    ~zoAssistantWallDialog() override;

    QSize sizeHint() const override;

    const zoHPCWallPlan& plan() const { return m_plan; } // for tests
    void setPlan(const zoHPCWallPlan& plan);

public slots:
    // Closes when the host has taken the configuration.
    void accept() override;

private:
    void createParts();
    void layOut();
    QString nodesThatAreThere() const;
    void changeKind();
    void readFields();
    void showPlan();
    void review();
    void tell();
    void tellFlaw(const QString& text);
    QString measures() const;
    static QString labelOf(zoHPCWallPlan::Field field);

    QPointer<zoConfigurationService> m_configuration;
    zoHPCWallPlan m_plan;
    zoHPCWallBuilder::Result m_result;
    QTimer m_timer; // until the plan is reviewed
    zoAssistantKindBox* m_kinds;
    zoAssistantViewerFields* m_viewer;
    zoAssistantNodeFields* m_nodes;
    std::vector<zoAssistantFields*> m_fields; // all, in the order of the dialog
    zoAssistantRoomView* m_room;
    QLabel* m_measures;
    QLabel* m_sign;
    QLabel* m_message;
    QDialogButtonBox* m_buttons;
};
