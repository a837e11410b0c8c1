#pragma once

#include <QDialog>
#include <QStringList>

// Help > About: versions of the program, its modules and what they stand on, and the licences of all of it.
class zoHostAboutDialog final : public QDialog
{
    Q_OBJECT

public:
    // The files of the loaded modules.
    explicit zoHostAboutDialog(const QStringList& moduleFiles, QWidget* parent = nullptr);
    ~zoHostAboutDialog() override;

    // What a report of a mistake should begin with: a line each, the same in all languages.
    static QString versions(const QStringList& moduleFiles);

private:
    QWidget* createPrograms(const QStringList& moduleFiles);
    QWidget* createLibraries();
    QWidget* createLicence();
};
