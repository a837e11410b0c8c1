#pragma once

#include "zoClusterSetup.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class zoItemPaths;

// Values of a configuration that are changed by their paths. What does not stay, or leaves a window or a viewport
// without what it shows, is a mistake; mistakes are collected, so that all of them can be told.
class zoConfigurationEdit final
{
    Q_DECLARE_TR_FUNCTIONS(zoConfigurationEdit)

public:
    explicit zoConfigurationEdit(zoClusterSetup& setup);

    // "PATH=VALUE"; an empty value stands for the default.
    void set(const QString& assignment);
    // Reads the changed document as a window would. To be called once, after the last change.
    void finish();

    const QStringList& mistakes() const { return m_mistakes; }
    // Whether a value is another one than before.
    bool hasChanged() const { return m_hasChanged; }
    // Canonical, after finish().
    const QString& text() const { return m_text; }

private:
    struct Change
    {
        QString path; // whole, of the attribute; names as they are after all changes
        int item;     // its index among the paths of the document, which changes keep
        QString attribute;
        QString value;
    };
    // By the name that they use: windows, or viewports.
    using Users = QMap<QString, std::vector<QDomElement>>;

    void set(const zoItemPaths& paths, int index, const QString& attribute, const QString& value);
    bool accepts(const QDomElement& element, const QString& path, const QString& attribute, QString& value);
    void rename(const QDomElement& element, const QString& before, const QString& after);
    // Of a kind of elements that name others by the attribute.
    Users usersOf(const QString& kind, const QString& attribute) const;
    void checkThatChangesStay(const QDomElement& root);
    void checkReferences(const QDomElement& root, zoClusterSetup& result);

    zoClusterSetup& m_setup;
    QDomDocument m_document;
    std::vector<Change> m_changes;
    // Filled when the first name changes, and kept for all of [*]; empty until then.
    std::optional<Users> m_windows;
    std::optional<Users> m_viewports;
    QStringList m_mistakes;
    bool m_hasChanged = false;
    QString m_text;
};
