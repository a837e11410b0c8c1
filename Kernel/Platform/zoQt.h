#pragma once

#include <QByteArray>
#include <QProcess>
#include <QtGlobal>

#include <functional>
#include <utility>

#ifdef QT_GUI_LIB
#include <QGuiApplication>
#endif
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#endif

// What Qt 5 and Qt 6 do differently is told apart in this header alone.

// Of overrides of what is const in Qt 5 only.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#define ZO_QT5_CONST const
#else
#define ZO_QT5_CONST
#endif

namespace zoQt
{
// A document as deep as may be takes more than half of a usual stack while it is read.
constexpr bool ReaderIsDeep = QT_VERSION >= QT_VERSION_CHECK(6, 0, 0);

// The encoding of QString::fromLocal8Bit().
inline QByteArray localEncoding()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return QTextCodec::codecForLocale()->name();
#else
    return "UTF-8"; // in every locale
#endif
}

// A process of which a function runs before its program does. Like a handler of a signal, it may do little there.
class ChildProcess : public QProcess
{
public:
    explicit ChildProcess(std::function<void()> prepare, QObject* parent = nullptr) : QProcess(parent)
    {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        m_prepare = std::move(prepare);
#else
        setChildProcessModifier(std::move(prepare));
#endif
    }

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
protected:
    void setupChildProcess() override
    {
        m_prepare();
    }

private:
    std::function<void()> m_prepare;
#endif
};

#ifdef QT_GUI_LIB
// Before the application: what it draws grows with the pixels of a screen, in whole steps.
inline void scaleToScreens()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::Round);
}

// Qt 5 would close the windows before the end of the session when nobody objects.
inline void closeNothingAtLogout()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QGuiApplication::setFallbackSessionManagementEnabled(false);
#endif
}
#endif
} // namespace zoQt
