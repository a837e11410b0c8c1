#pragma once

#include "zoHPCDisplayTables.h"

#include <QList>
#include <QModelIndex>
#include <QObject>
#include <QPersistentModelIndex>

class QZODataWidgetMapper;
class Ui_zoHPCDisplayGUII;
class zoHPCDisplaySetup;
class zoHPCViewportItem;

// The panel of a viewport: the projection that it shows, its rectangle, stereo mode and mirroring.
class zoHPCViewportPanel final : public QObject
{
    Q_OBJECT

public:
    // The dialog's form, set up, the mapper of the output tree and what the trees hold; not owned.
    zoHPCViewportPanel(const Ui_zoHPCDisplayGUII& form, QZODataWidgetMapper& mapper,
                       const zoHPCDisplaySetup& setup, QObject* parent = nullptr);
    ~zoHPCViewportPanel() override;

    // Its list of projections costs as much as the rows of their tree, so it has them only while it is seen.
    void setIsShown(bool isShown);
    // Of the current viewport; each does nothing without one.
    void showProjection();
    void showPixels();
    // Of what the fields hold.
    void showEyes();
    void enableCorners();

signals:
    // A person chose a row of the projections.
    void projectionChosen(const QModelIndex& row);

private:
    zoHPCViewportItem* currentViewport() const;
    void keepPlace();
    void nameCorners(bool isInPixels);
    void chooseEyes(zoHPCDisplayTables::StereoMode::Eyes eyes);

    const Ui_zoHPCDisplayGUII& m_ui;
    const zoHPCDisplaySetup& m_setup;
    QList<QPersistentModelIndex> m_expanded; // of the list of projections, while it is not seen
    int m_scroll = 0;
};
