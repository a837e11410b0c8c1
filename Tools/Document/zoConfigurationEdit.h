#pragma once

#include "zoClusterSetup.h"
#include "zoItemPaths.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// Values of a configuration that are changed by their paths. What does not stay, or leaves a window or a viewport
// without what it shows, is a mistake; mistakes are collected, so that all of them can be told.
class zoConfigurationEdit final
{
    Q_DECLARE_TR_FUNCTIONS(zoConfigurationEdit)

public:
    explicit zoConfigurationEdit(zoClusterSetup& setup);

    // "PATH=VALUE"; an empty value stands for the default.
    void set(const QString& assignment);
    // Reads the changed document into the setup as a window would. To be called once, after the last change.
    void finish();

    const QStringList& mistakes() const { return m_mistakes; }
    // Whether a value is another one than before.
    bool hasChanged() const { return m_hasChanged; }
    // Canonical, after finish().
    const QString& text() const { return m_text; }

private:
    struct Change
    {
        int item; // its index among the paths of the document, which changes keep
        QString attribute;
        QString value;
    };
    struct Window
    {
        QString node;
        bool isGood; // the node is there
    };
    // A viewport by its path, and the projection that it is to show.
    struct Shown
    {
        QString path;
        QString projection;
    };
    // By the name that they use, or used: windows, or viewports.
    using Users = QMap<QString, std::vector<QDomElement>>;

    void set(int index, const QString& attribute, const QString& value);
    bool accepts(int index, const QString& attribute, QString& value);
    // Whole, with names as they are by now.
    QString pathOf(int index, const QString& attribute);
    void rename(const QDomElement& element, const QString& before, const QString& after);
    // When a window or viewport names another one.
    void addUser(const QDomElement& element, const QString& attribute);
    // Of a kind of elements that name others by the attribute.
    Users usersOf(const QString& kind, const QString& attribute) const;
    std::vector<Shown> shownProjections() const;
    // Of what was read nothing but the paths stays.
    void leaveDocument();
    // By the paths of what was read.
    void checkThatChangesStay(const zoItemPaths& after);
    void checkProjections(const std::vector<Shown>& wanted, const zoItemPaths& read);
    void checkNodes(const std::vector<Window>& before);
    static std::vector<Window> windowsOf(zoClusterSetup& setup);

    zoClusterSetup& m_setup;
    QDomDocument m_document;
    zoItemPaths m_paths; // of the document
    std::vector<Change> m_changes;
    // Filled when the first name changes, and kept for all changes; empty until then.
    std::optional<Users> m_windows;
    std::optional<Users> m_viewports;
    QStringList m_mistakes;
    bool m_hasChanged = false;
    QString m_text;
};
