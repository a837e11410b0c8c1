#pragma once

#include <zoConfigurationService.h>

#include <QStringList>

// A configuration service that holds one text, and writes down what it was given.
class zoFakeConfigurationService final : public zoConfigurationService
{
public:
    using zoConfigurationService::zoConfigurationService;

    QString text() const override { return held; }
    QString fileName() const override { return file; }
    QString obstacle() const override { return hindrance; }
    bool replace(const QString& text, const QString& step, QString* refusal = nullptr) override
    {
        if (refusal != nullptr)
            *refusal = nextRefusal;
        if (!nextRefusal.isEmpty())
            return false;
        held = text;
        steps << step;
        emit changed();
        return true;
    }

    QString held;
    QString file;
    QString hindrance;
    QString nextRefusal; // of replace()
    QStringList steps;
};
