#pragma once

#include <QObject>

// Turns an interrupt or a request to terminate (SIGINT, SIGTERM, SIGHUP) into a signal on the user-interface thread,
// so that the program ends in its usual order; also the end of a desktop's session, at which nobody is there to
// answer what windows ask when they close. At most one at a time.
class zoHostSignals final : public QObject
{
    Q_OBJECT

public:
    explicit zoHostSignals(QObject* parent = nullptr);
    ~zoHostSignals() override; // gives the signals their default meaning again

signals:
    void terminationRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override; // of the application

private:
    int m_readEnd = -1;
};
