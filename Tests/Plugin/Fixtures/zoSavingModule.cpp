// A module that lets the window of another one load the files named in ZO_SAVING_FILES and save each as
// ZO_SAVING_TARGET, over and over, as a person could. It prints a line for each save; after ZO_SAVING_ROUNDS of
// them, when that is given, it ends the host.

#include <QApplication>
#include <QMetaMethod>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace
{
class SavingModule final : public QObject
{
public:
    SavingModule()
    {
        connect(&m_timer, &QTimer::timeout, this, &SavingModule::saveNext);
        m_timer.start(0);
    }

private:
    static QWidget* moduleWindow()
    {
        const QWidgetList widgets = QApplication::allWidgets();
        for (QWidget* widget : widgets) {
            if (widget->metaObject()->indexOfSlot("saveConfig(QString)") >= 0)
                return widget;
        }
        return nullptr;
    }

    void saveNext()
    {
        QWidget* window = moduleWindow();
        if (window == nullptr)
            return;
        const QString file = m_files.at(m_saved % m_files.size());
        QMetaObject::invokeMethod(window, "loadConfig", Q_ARG(QString, file));
        QMetaObject::invokeMethod(window, "saveConfig",
                                  Q_ARG(QString, qEnvironmentVariable("ZO_SAVING_TARGET")));
        std::printf("saved %d\n", ++m_saved);
        std::fflush(stdout);
        if (m_saved == m_rounds) {
            m_timer.stop();
            QCoreApplication::quit();
        }
    }

    QStringList m_files = qEnvironmentVariable("ZO_SAVING_FILES").split(QLatin1Char(':'));
    int m_rounds = qEnvironmentVariableIntValue("ZO_SAVING_ROUNDS");
    int m_saved = 0;
    QTimer m_timer;
};
} // namespace

extern "C" Q_DECL_EXPORT void initPlugin()
{
    static SavingModule module;
}
