#pragma once

#include "zoHPCWallPlan.h"

#include <QWidget>

class QButtonGroup;

// The kinds of walls as pictures in a row, of which one is chosen.
class zoAssistantKindBox final : public QWidget
{
    Q_OBJECT

public:
    explicit zoAssistantKindBox(QWidget* parent = nullptr);
    ~zoAssistantKindBox() override;

    zoHPCWallPlan::Kind kind() const;
    // Announces nothing.
    void setKind(zoHPCWallPlan::Kind kind);

signals:
    // By a person.
    void kindChosen();

private:
    QButtonGroup* m_buttons;
};
