#include "zoHostTranslations.h"

#include <zoPlatform.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QTranslator>

#include <cstring>

namespace
{
constexpr char s_hostTexts[] = "zohost";
constexpr char s_qtTexts[] = "qtbase";

QString qtFolder()
{
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
}

// The file for a language, or for the language without its country; empty when there is none.
QString fileOf(const QString& folder, const QString& name, QString language)
{
    while (!language.isEmpty()) {
        const QString file = QStringLiteral("%1/%2_%3.qm").arg(folder, name, language);
        if (QFileInfo::exists(file))
            return file;
        language.truncate(std::max(0, int(language.lastIndexOf(QLatin1Char('_')))));
    }
    return {};
}

QString fileOf(const QString& name, const QString& language)
{
    const QStringList folders = zoHostTranslations::folders();
    for (const QString& folder : folders) {
        const QString file = fileOf(folder, name, language);
        if (!file.isEmpty())
            return file;
    }
    return {};
}

// The first language that the host speaks. A person who prefers English to German gets English, although no
// file bears its name.
QString firstSpoken(const QStringList& wanted)
{
    for (QString language : wanted) {
        language.replace(QLatin1Char('-'), QLatin1Char('_'));
        const QString base = language.section(QLatin1Char('_'), 0, 0);
        if (base == QLatin1String("en") || base == QLatin1String("C"))
            break;
        if (!fileOf(QLatin1String(s_hostTexts), language).isEmpty())
            return language;
    }
    return QStringLiteral("en");
}
} // namespace

zoHostTranslations::zoHostTranslations(const QString& language)
    : m_language(firstSpoken(language.isEmpty() ? QLocale::system().uiLanguages() : QStringList(language)))
{
    if (!language.isEmpty())
        QLocale::setDefault(QLocale(language));
    install(fileOf(qtFolder(), QLatin1String(s_qtTexts), m_language));
    add(QLatin1String(s_hostTexts));
}

QStringList zoHostTranslations::known()
{
    QStringList names;
    const QStringList places = folders();
    for (const QString& place : places) {
        const QStringList files =
            QDir(place).entryList({QStringLiteral("%1_*.qm").arg(QLatin1String(s_hostTexts))}, QDir::Files);
        for (const QString& file : files)
            names << QFileInfo(file).completeBaseName().mid(int(std::strlen(s_hostTexts)) + 1);
    }
    names.sort();
    names.removeDuplicates();
    names.removeAll(QStringLiteral("en"));
    return QStringList(QStringLiteral("en")) + names;
}

bool zoHostTranslations::knows(const QString& language)
{
    QString name = language;
    name.replace(QLatin1Char('-'), QLatin1Char('_'));
    const QString base = name.section(QLatin1Char('_'), 0, 0);
    return base == QLatin1String("en") || base == QLatin1String("C") ||
           !fileOf(QLatin1String(s_hostTexts), name).isEmpty();
}

zoHostTranslations::~zoHostTranslations()
{
    while (!m_translators.empty()) {
        QCoreApplication::removeTranslator(m_translators.back().get());
        m_translators.pop_back();
    }
    QLocale::setDefault(m_previousLocale);
}

bool zoHostTranslations::add(const QString& name)
{
    return install(fileOf(name, m_language));
}

bool zoHostTranslations::addModule(const QString& moduleFile)
{
    QString name = QFileInfo(moduleFile).baseName();
    if (name.startsWith(QLatin1String("lib")))
        name.remove(0, 3);
    return add(name);
}

QStringList zoHostTranslations::folders()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return {QString::fromStdString(zoPlatform::getDataDir()) + QStringLiteral("/translations"),
            QDir::cleanPath(program.absoluteFilePath(QStringLiteral(ZO_INSTALLED_TRANSLATION_DIR))),
            QStringLiteral(ZO_BUILT_TRANSLATION_DIR)};
}

bool zoHostTranslations::install(const QString& fileName)
{
    if (fileName.isEmpty())
        return false;
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(fileName) || !QCoreApplication::installTranslator(translator.get()))
        return false;
    m_translators.push_back(std::move(translator));
    return true;
}
