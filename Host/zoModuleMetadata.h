#pragma once

#include <QCoreApplication>
#include <QString>

// What a plug-in file says of itself, read from the file without running any code of it.
class zoModuleMetadata final
{
    Q_DECLARE_TR_FUNCTIONS(zoModuleMetadata)

public:
    // Also of one that was read before and is loaded by now.
    static zoModuleMetadata read(const QString& fileName);

    // Modules need not say anything: those that do not are known by their file name alone.
    bool isPresent() const { return !m_iid.isEmpty(); }
    const QString& name() const { return m_name; }
    const QString& version() const { return m_version; }
    const QString& licence() const { return m_licence; }
    int interfaceVersion() const { return m_interfaceVersion; } // 0 when it is no number

    // Why this host does not load it, with the remedy; empty when it may try.
    QString refusal() const;

private:
    QString m_iid;
    QString m_name;
    QString m_version;
    QString m_licence;
    int m_interfaceVersion = 0;
    int m_qt = 0; // major version
    bool m_isDamaged = false;
};
