#include "zoTestCase.h"

#include <zoHostApplication.h>
#include <zoHostMainWindow.h>
#include <zoHostMainWindowService.h>
#include <zoKernelServiceFactory.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

namespace
{
// Answers all questions; the dialog that shows a start is no question.
class Person final
{
public:
    explicit Person(QMessageBox::StandardButton answer)
    {
        constexpr int Often = 10; // ms
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, answer] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            questions << box->text();
            box->button(answer)->click();
        });
        m_timer.start(Often);
    }

    QStringList questions;

private:
    QTimer m_timer;
};
} // namespace

// A host with the program of the node servers beside it, on a desk without a cluster.
class tst_zoHostRehearsal final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();

    void unreachableClusterIsRehearsedAfterAQuestion_data();
    void unreachableClusterIsRehearsedAfterAQuestion();
    void scriptIsNotAsked();

private:
    static std::unique_ptr<zoHostApplication> createHost(bool isScript);
    static zoHostMainWindow* window()
    {
        auto* service = zoKernelServiceFactory::getService<zoMainWindowService>();
        return qobject_cast<zoHostMainWindow*>(service->mainWindowWidget());
    }
    // A configuration whose only node cannot be reached.
    void open() const { window()->openConfiguration(m_directory.filePath("wall.zhpc")); }
    static QAction* startAction();
    static zoClusterService* cluster() { return zoKernelServiceFactory::getService<zoClusterService>(); }

    QTemporaryDir m_directory;
};

void tst_zoHostRehearsal::initTestCase()
{
    zoTestCase::initTestCase();
    QVERIFY(m_directory.isValid());
    qunsetenv("ZOKE_DATA");
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
        qputenv(variable, QFile::encodeName(m_directory.path()));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_directory.path());
    QCoreApplication::setOrganizationName("zo");
    QSettings().setValue("Preferences/Cluster launch command", QStringLiteral(ZO_LAUNCHER " %h %program"));
    QFile file(m_directory.filePath("wall.zhpc"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(
        "<cluster version=\"1\"><master><network><node name=\"failing\"/></network></master></cluster>");
}

std::unique_ptr<zoHostApplication> tst_zoHostRehearsal::createHost(bool isScript)
{
    zoHostOptions options;
    options.moduleFiles = QStringList(QStringLiteral(ZO_MODULE_FILE));
    options.nonInteractive = isScript;
    return std::make_unique<zoHostApplication>(options);
}

QAction* tst_zoHostRehearsal::startAction()
{
    const QList<QAction*> actions = window()->findChildren<QAction*>();
    for (QAction* action : actions) {
        if (action->text() == QLatin1String("Start"))
            return action;
    }
    qFatal("no action Start");
}

void tst_zoHostRehearsal::unreachableClusterIsRehearsedAfterAQuestion_data()
{
    QTest::addColumn<bool>("isWanted");

    QTest::newRow("yes") << true;
    QTest::newRow("no") << false;
}

void tst_zoHostRehearsal::unreachableClusterIsRehearsedAfterAQuestion()
{
    QFETCH(bool, isWanted);
    const auto host = createHost(false);
    open();
    Person person(isWanted ? QMessageBox::Yes : QMessageBox::No);

    startAction()->trigger();

    QCOMPARE(person.questions.size(), 1);
    QVERIFY(person.questions.constFirst().startsWith("No node of the configuration can be reached."));
    QCOMPARE(cluster()->isRunning(), isWanted);
    QCOMPARE(cluster()->runningNodes(), isWanted ? QStringList("failing") : QStringList());
}

void tst_zoHostRehearsal::scriptIsNotAsked()
{
    const auto host = createHost(true);
    open();
    Person person(QMessageBox::Yes);

    startAction()->trigger();

    QCOMPARE(person.questions, QStringList());
    QVERIFY(!cluster()->isRunning());
}

ZO_TEST_MAIN(tst_zoHostRehearsal)
#include "tst_zoHostRehearsal.moc"
