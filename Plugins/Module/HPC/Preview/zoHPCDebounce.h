#pragma once

#include <QObject>
#include <QTimer>

// Tells changes that follow each other quickly, as while a spin box is held or a wheel turned, from single
// ones: what shows them may do less for each and all of it once they settle.
class zoHPCDebounce final : public QObject
{
    Q_OBJECT

public:
    // Longer than a held spin box or key takes from one step to the next.
    static constexpr int Interval = 250; // ms

    explicit zoHPCDebounce(QObject* parent = nullptr);
    ~zoHPCDebounce() override;

    // A change. The first one is single; those that come within the interval after another are quick.
    void note();
    // Whether the last change was a quick one and is not yet settled.
    bool isQuick() const { return m_isQuick; }
    // At once; announces nothing.
    void settle();

signals:
    // After quick changes, when none came for the interval.
    void settled();

private:
    QTimer m_timer{this}; // a child: it ends with the window
    bool m_isQuick = false;
};
