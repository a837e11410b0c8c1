#pragma once

#include "zoHPCElementScanner.h"

#include <QCoreApplication>
#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

// The named parameters of a legacy configuration, and which of its layouts they describe.
class zoHPCLegacyParameters final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCConfigConverter)

public:
    // Layouts of a legacy file; the numbers are the format's own.
    enum Mode { Raytracing = 0, Powerwall = 1, Custom = 2, Old = 3 };

    // Parameters inside more than this many others are ignored, as each one's value holds those inside it.
    static constexpr int MaximumNested = 100;

    // Takes the place of what was read before. A text that does not parse has no parameters.
    void read(const QString& legacyText);

    int count() const { return int(m_values.size()); }
    QString value(const char* name, const char* defaultValue) const;
    bool isOn(const char* name) const; // "1"
    Mode mode() const { return m_mode; }

    // Windows of the custom layout: the values of zoClusterPipe0, 1, 2 ... up to the first number that is
    // missing.
    QStringList pipes() const;
    // Names of the pipes from a number on, in the order of their numbers.
    QStringList pipeNamesFrom(int firstNumber) const;
    // The parameter that holds the hosts and windows of the layout: one for all of them, but in the custom
    // layout one for each entry.
    QString entryName(int entry) const;

    // Reads the text again, for where the parameters of these names stand; the beginning for one that does
    // not.
    QHash<QString, zoHPCElementScanner::Place> placesOf(const QStringList& names) const;

private:
    Mode chooseMode() const;

    QString m_text;
    QMap<QString, QString> m_values;
    Mode m_mode = Custom;
};
