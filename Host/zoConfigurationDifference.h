#pragma once

#include <QCoreApplication>
#include <QString>

// In one sentence, how a configuration that was not saved differs from the file that it was open as.
class zoConfigurationDifference final
{
    Q_DECLARE_TR_FUNCTIONS(zoConfigurationDifference)

public:
    // Without a name, how much it holds. A file that cannot be read is said to be away.
    zoConfigurationDifference(const QString& text, const QString& fileName);

    const QString& sentence() const { return m_sentence; }
    // Nothing of it is unsaved.
    bool isNone() const { return m_isNone; }

private:
    QString m_sentence;
    bool m_isNone = false;
};
