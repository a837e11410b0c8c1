#pragma once

#include <QObject>

// Lets the wheel scroll a panel instead of changing the number or the choice that happens to lie under the pointer:
// fields take it only while they have the focus, which the wheel itself does not give them.
class zoHPCWheelGuard final : public QObject
{
    Q_OBJECT

public:
    // Of all spin and combo boxes that lie on the panels now; the guard is theirs.
    explicit zoHPCWheelGuard(QWidget* panels);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
