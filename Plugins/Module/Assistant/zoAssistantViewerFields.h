#pragma once

#include "zoAssistantFields.h"

class QComboBox;
class QLabel;
class QPushButton;
class zoAssistantNumberField;

// Where the viewer is, and how his two eyes are served.
class zoAssistantViewerFields final : public zoAssistantFields
{
    Q_OBJECT

public:
    explicit zoAssistantViewerFields(QWidget* parent = nullptr);
    ~zoAssistantViewerFields() override;

    void showPlan(const zoHPCWallPlan& plan) override;
    void apply(zoHPCWallPlan& plan) const override;

    // A person wants to show the place in the picture.
    bool isPicking() const;
    // The viewer goes so far, in millimetres; picking is over.
    void move(double right, double back);

signals:
    void pickingChanged(bool isPicking);

private:
    void layOut();
    zoAssistantNumberField* addLength(const char* name, const QString& toolTip, double minimum);

    zoAssistantNumberField* m_distance;
    zoAssistantNumberField* m_right;
    zoAssistantNumberField* m_up;
    QLabel* m_distanceLabel;
    QLabel* m_rightLabel;
    QLabel* m_upLabel;
    QPushButton* m_standHere;
    QComboBox* m_stereo;
    zoAssistantNumberField* m_eyeSeparation;
    QLabel* m_eyeSeparationLabel;
    QComboBox* m_eyeOrder;
    QLabel* m_eyeOrderLabel;
    bool m_isInside = false; // of a box, where distances may be below 0
};
