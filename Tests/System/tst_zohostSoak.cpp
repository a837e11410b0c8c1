#include "zoTestCase.h"

#include <zoHostApplication.h>
#include <zoKernelServiceFactory.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmapCache>
#include <QPointer>
#include <QRandomGenerator>
#include <QSettings>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

#include <malloc.h>

#include <functional>
#include <memory>
#include <vector>

#ifdef __SANITIZE_ADDRESS__
extern "C" std::size_t __sanitizer_get_current_allocated_bytes(); // gcc has it without its header
#endif

namespace
{
constexpr int s_steps = 200;
constexpr int s_chapter = 1000; // after each of so many steps memory is measured
constexpr int s_seed = 20261122;
constexpr int s_answerMs = 200;
constexpr int s_mostRows = 40; // of each tree
constexpr double s_mostGrowth = 1.05;
const char s_sample[] = "powerwall-2x2.zhpc";
const char* const s_samples[] = {s_sample, "cave-4-sided.zhpc", "tiledwall-3x5-gateway.zhpc"};

int numberOf(const char* variable, int otherwise)
{
    const int wanted = qEnvironmentVariableIntValue(variable);
    return wanted > 0 ? wanted : otherwise;
}

// In use, as the allocator counts it.
std::size_t heapBytes()
{
#ifdef __SANITIZE_ADDRESS__
    return __sanitizer_get_current_allocated_bytes(); // its allocator takes the place of the one that mallinfo2() asks
#else
    return ::mallinfo2().uordblks + ::mallinfo2().hblkhd;
#endif
}

// In KiB.
struct Memory
{
    qint64 heap;      // in use
    qint64 anonymous; // resident, without the files that are mapped
};
} // namespace

// The real host with the module from its file, used at random for long: every step is checked, and memory does not grow.
// ZO_SOAK_STEPS and ZO_SEED ask for other steps than these; memory counts from two chapters on.
class tst_zohostSoak final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void randomStepsKeepTheirPromises_data();
    void randomStepsKeepTheirPromises();

private:
    struct Step
    {
        const char* name;
        int weight;
        std::function<void()> run;
    };

    static zoHostMainWindow* mainWindow()
    {
        auto* service = zoKernelServiceFactory::getService<zoMainWindowService>();
        return qobject_cast<zoHostMainWindow*>(service->mainWindowWidget());
    }
    static QWidget* window() { return mainWindow()->moduleWindows().constFirst(); }
    static QDialog* displaySetup()
    {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (widget->inherits("zoHPCDisplayGUII"))
                return qobject_cast<QDialog*>(widget);
        }
        return nullptr;
    }
    static zoClusterService* cluster() { return zoKernelServiceFactory::getService<zoClusterService>(); }
    static QString text() { return window()->property("configuration").toString(); }

    int random(int bound) { return int(m_random.bounded(quint32(qMax(1, bound)))); }
    QString name();
    static void compare(const QString& is, const QString& should);
    static void call(QObject* object, const char* slot);
    void trigger(const QString& text);
    QTreeWidget* hosts() const { return window()->findChild<QTreeWidget*>(QStringLiteral("m_treeWidget")); }
    QTreeWidgetItem* randomRow(const QTreeWidget* tree);
    std::vector<Step> steps();
    void changeField();
    void changeSetup();
    void deleteRow(const QDialog& dialog);
    void reload(const QString& file);
    void save();
    void takeBack();
    void toggleSession();
    void answer();
    void rest();
    Memory measure();

    QRandomGenerator m_random;
    std::vector<int> m_done; // of each kind of step
    Memory m_first{};        // after the first chapter
    QTimer m_answers;
    QString m_question; // that nobody expected
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<zoHostApplication> m_host;
};

// One host for all chapters.
void tst_zohostSoak::initTestCase()
{
    zoTestCase::initTestCase();
    qunsetenv("ZOKE_DATA");
    QCoreApplication::setOrganizationName("zo");
    QCoreApplication::setApplicationName("zohost");
    m_folder = std::make_unique<QTemporaryDir>();
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
        qputenv(variable, QFile::encodeName(m_folder->path()));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder->path());
    QSettings().setValue("Preferences/Autosave seconds", "1");
    for (const char* sample : s_samples) {
        const QString file = m_folder->filePath(QLatin1String(sample));
        QVERIFY(QFile::copy(QStringLiteral(ZO_DATA_DIR "/cluster/") + QLatin1String(sample), file));
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
    }
    zoHostOptions options;
    options.engine = QStringLiteral("local");
    options.moduleFiles = QStringList(QStringLiteral(ZO_MODULE_FILE));
    m_host = std::make_unique<zoHostApplication>(options);
    mainWindow()->show();
    window()->show();
    m_random.seed(quint32(numberOf("ZO_SEED", s_seed)));
    connect(&m_answers, &QTimer::timeout, this, &tst_zohostSoak::answer);
    m_answers.start(s_answerMs);
}

void tst_zohostSoak::cleanupTestCase()
{
    const std::vector<Step> all = steps();
    for (std::size_t i = 0; i < m_done.size(); ++i)
        qInfo("%5d x %s", m_done[i], all[i].name);
    m_host.reset();
    m_folder.reset();
}

void tst_zohostSoak::randomStepsKeepTheirPromises_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");

    const int count = numberOf("ZO_SOAK_STEPS", s_steps);
    for (int from = 0; from < count; from += s_chapter) {
        const int to = qMin(from + s_chapter, count);
        QTest::addRow("%d-%d", from + 1, to) << from << to;
    }
}

void tst_zohostSoak::randomStepsKeepTheirPromises()
{
    QFETCH(int, from);
    QFETCH(int, to);
    const std::vector<Step> all = steps();
    std::vector<std::size_t> lots;
    for (std::size_t i = 0; i < all.size(); ++i)
        lots.insert(lots.end(), std::size_t(all[i].weight), i);
    m_done.resize(all.size());

    for (int step = from + 1; step <= to; ++step) {
        const std::size_t which = lots[std::size_t(random(int(lots.size())))];
        all[which].run();
        ++m_done[which];
        QCoreApplication::processEvents();
        [&] { QVERIFY2(m_question.isEmpty(), qPrintable(m_question)); }();
        if (QTest::currentTestFailed()) {
            qInfo("in step %d, session %s: %s", step, cluster()->isRunning() ? "runs" : "does not run",
                  all[which].name);
            return;
        }
    }
    const Memory now = measure();
    if (QTest::currentTestFailed())
        return;
    if (from == 0)
        m_first = now;
    qInfo("%d steps: heap %lld KiB (%+.2f %%), resident %lld KiB (%+.2f %%)", to, now.heap,
          100.0 * (double(now.heap) / double(m_first.heap) - 1), now.anonymous,
          100.0 * (double(now.anonymous) / double(m_first.anonymous) - 1));
    QVERIFY(double(now.heap) < s_mostGrowth * double(m_first.heap));
    QVERIFY(double(now.anonymous) < s_mostGrowth * double(m_first.anonymous));
}

std::vector<tst_zohostSoak::Step> tst_zohostSoak::steps()
{
    const auto hasRoom = [this] {
        return hosts()->findItems("*", Qt::MatchWildcard | Qt::MatchRecursive).size() < s_mostRows;
    };
    return {
        {"choose a host", 10,
         [this] {
             if (QTreeWidgetItem* const row = randomRow(hosts()))
                 hosts()->setCurrentItem(row);
         }},
        {"add a network", 4,
         [this, hasRoom] {
             if (hasRoom())
                 trigger(QStringLiteral("Add network"));
         }},
        {"add a node", 4,
         [this, hasRoom] {
             if (hasRoom())
                 trigger(QStringLiteral("Add compute node"));
         }},
        {"remove a network", 3, [this] { trigger(QStringLiteral("Remove network")); }},
        {"remove a node", 3, [this] { trigger(QStringLiteral("Remove compute node")); }},
        {"change a field", 20, [this] { changeField(); }},
        {"change the display setup", 8, [this] { changeSetup(); }},
        {"undo and redo", 20, [this] { takeBack(); }},
        {"save", 3, [this] { save(); }},
        {"load a file", 3, [this] { reload(QLatin1String(s_samples[random(int(std::size(s_samples)))])); }},
        {"start or stop a session", 6, [this] { toggleSession(); }},
    };
}

QString tst_zohostSoak::name()
{
    const char* const names[] = {"n1", "n2", "n08", "Wall", "<&\"'>", "gr\xc3\xbc\xc3\x9f", "a b", "%1"};
    return QString::fromUtf8(names[random(int(std::size(names)))]);
}

// Documents are longer than what a failed comparison shows.
void tst_zohostSoak::compare(const QString& is, const QString& should)
{
    const QStringList lines = is.split(QLatin1Char('\n'));
    const QStringList wanted = should.split(QLatin1Char('\n'));
    for (int line = 0; line < qMax(lines.size(), wanted.size()); ++line) {
        QVERIFY2(lines.value(line) == wanted.value(line),
                 qPrintable(QStringLiteral("line %1 is %2, should be %3")
                                .arg(line + 1)
                                .arg(lines.value(line).trimmed(), wanted.value(line).trimmed())));
    }
}

void tst_zohostSoak::call(QObject* object, const char* slot)
{
    QVERIFY2(QMetaObject::invokeMethod(object, slot), slot);
}

// Where a person could.
void tst_zohostSoak::trigger(const QString& text)
{
    const QList<QAction*> actions = window()->findChildren<QAction*>();
    for (QAction* const action : actions) {
        if (action->text() == text && action->isEnabled()) {
            action->trigger();
            return;
        }
    }
}

QTreeWidgetItem* tst_zohostSoak::randomRow(const QTreeWidget* tree)
{
    QTreeWidgetItem* item = tree->topLevelItem(random(tree->topLevelItemCount()));
    while (item && item->childCount() > 0 && random(3) > 0)
        item = item->child(random(item->childCount()));
    return item;
}

// Of the row that is chosen.
void tst_zohostSoak::changeField()
{
    const auto* const pages = window()->findChild<QStackedWidget*>(QStringLiteral("m_stackedEditPanel"));
    QVERIFY(pages);
    QList<QWidget*> fields;
    const QList<QWidget*> all =
        pages->currentWidget()->findChildren<QWidget*>(QRegularExpression(QStringLiteral("^m_")));
    for (QWidget* const field : all) {
        if (field->isEnabled() && (qobject_cast<QComboBox*>(field) || qobject_cast<QCheckBox*>(field) ||
                                   qobject_cast<QSpinBox*>(field) || qobject_cast<QLineEdit*>(field)))
            fields << field;
    }
    QWidget* const field = fields.value(random(fields.size()));
    if (auto* combo = qobject_cast<QComboBox*>(field))
        combo->setCurrentIndex(random(combo->count()));
    else if (auto* box = qobject_cast<QCheckBox*>(field))
        box->click();
    else if (auto* number = qobject_cast<QSpinBox*>(field))
        number->setValue(1 + random(65535));
    else if (auto* line = qobject_cast<QLineEdit*>(field))
        line->setText(name());
}

// By the action of one of its trees, where that is enabled: what a projection generates cannot be deleted by itself.
// Qt 5 triggers disabled actions, too.
void tst_zohostSoak::deleteRow(const QDialog& dialog)
{
    const char* const tree = random(2) > 0 ? "m_projectionTree" : "m_displayTree";
    const QList<QAction*> actions = dialog.findChild<QTreeWidget*>(QLatin1String(tree))->actions();
    for (QAction* const action : actions) {
        if (action->text() == QLatin1String("Delete") && action->isEnabled())
            action->trigger();
    }
}

// Opened, changed in a few places, and taken over or not.
void tst_zohostSoak::changeSetup()
{
    const QString before = text();
    trigger(QStringLiteral("Display Setup..."));
    QCoreApplication::processEvents();
    const QPointer<QDialog> dialog = displaySetup();
    if (!dialog || !dialog->isVisible()) {
        QVERIFY(cluster()->isRunning()); // then it does not open
        return;
    }
    const char* const changes[] = {
        "addProjection",   "addDisplay",  "addWindow",    "addViewport",     "copyProjection",
        "pasteProjection", "copyDisplay", "pasteDisplay", "convertToPlanes", nullptr};
    for (int change = random(4); change >= 0; --change) {
        int rows = 0;
        for (const char* const name : {"m_projectionTree", "m_displayTree"}) {
            auto* const tree = dialog->findChild<QTreeWidget*>(QLatin1String(name));
            QVERIFY2(tree, name);
            if (QTreeWidgetItem* const row = randomRow(tree))
                tree->setCurrentItem(row);
            rows += tree->topLevelItemCount();
        }
        const char* const slot = rows < s_mostRows ? changes[random(int(std::size(changes)))] : nullptr;
        if (slot)
            call(dialog, slot);
        else
            deleteRow(*dialog);
    }
    const bool isTaken = random(2) > 0;
    call(dialog, isTaken ? "accept" : "reject");
    QVERIFY(!dialog || !dialog->isVisible());
    if (!isTaken)
        compare(text(), before);
}

void tst_zohostSoak::reload(const QString& file)
{
    if (cluster()->isRunning())
        return;
    const QString path = m_folder->filePath(file);
    QVERIFY(QMetaObject::invokeMethod(window(), "loadConfig", Q_ARG(QString, path)));
    QFile saved(path);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    compare(text(), QString::fromUtf8(saved.readAll()));
}

void tst_zohostSoak::save()
{
    const QString path = m_folder->filePath(QStringLiteral("saved.zhpc"));
    QVERIFY(QMetaObject::invokeMethod(window(), "saveConfig", Q_ARG(QString, path)));
    QFile saved(path);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    compare(QString::fromUtf8(saved.readAll()), text());
}

// A few steps back and as many forth.
void tst_zohostSoak::takeBack()
{
    auto* const undo = mainWindow()->findChild<QAction*>(QStringLiteral("Undo"));
    auto* const redo = mainWindow()->findChild<QAction*>(QStringLiteral("Redo"));
    QVERIFY(undo && redo);
    QStringList texts;
    for (int steps = 1 + random(5); steps > 0; --steps) {
        const QString before = text();
        QCoreApplication::processEvents();
        if (!undo->isEnabled())
            break;
        undo->trigger();
        texts << before;
    }
    const bool isLeft = random(3) == 0;
    while (!isLeft && !texts.isEmpty()) {
        QVERIFY(redo->isEnabled());
        redo->trigger();
        compare(text(), texts.takeLast());
    }
}

void tst_zohostSoak::toggleSession()
{
    if (cluster()->isRunning()) {
        call(window(), "stopCluster");
        QVERIFY(!cluster()->isRunning());
        return;
    }
    // One that can start.
    reload(QLatin1String(s_sample));
    call(window(), "startCluster");
    QTRY_VERIFY(cluster()->isRunning());
    QVERIFY(!cluster()->runningNodes().isEmpty());
}

// A machine that is short of memory is none of the host's business here; nothing else may ask.
void tst_zohostSoak::answer()
{
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box)
        return;
    QAbstractButton* const risk = box->button(QMessageBox::Yes);
    if (risk && box->text().contains(QLatin1String("memory"))) {
        risk->click();
        return;
    }
    m_question = box->text();
    box->reject();
}

// The state in which memory is compared: one file loaded, no session, no step to take back, no message in the log.
void tst_zohostSoak::rest()
{
    if (cluster()->isRunning())
        toggleSession();
    reload(QLatin1String(s_sample));
    auto* const clear = mainWindow()->findChild<QToolButton*>(QStringLiteral("LogClear"));
    QVERIFY(clear);
    clear->click();
}

Memory tst_zohostSoak::measure()
{
    rest();
    for (int turn = 0; turn < 3; ++turn) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QPixmapCache::clear();
    ::malloc_trim(0);
    Memory result{};
    result.heap = qint64(heapBytes()) / 1024;
    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = status.readAll().split('\n');
        for (const QByteArray& line : lines) {
            if (line.startsWith("RssAnon:"))
                result.anonymous = line.mid(8).trimmed().split(' ').constFirst().toLongLong();
        }
    }
    [&] { QVERIFY(result.heap > 0 && result.anonymous > 0); }();
    return result;
}

ZO_TEST_MAIN(tst_zohostSoak)
#include "tst_zohostSoak.moc"
