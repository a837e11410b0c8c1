#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCDisplayTables.h>
#include <zoHPCGUIW.h>
#include <zoHPCTreeEditGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTranslator>
#include <QTreeWidget>

#include <memory>

namespace
{
// The module in a language: its texts, and how numbers are written and read.
class Language final
{
public:
    explicit Language(const QString& name)
    {
        QLocale::setDefault(QLocale(name));
        if (name == QLatin1String("de")) {
            m_isLoaded = m_translator.load(ZO_TRANSLATION_DIR "/zoHPC_de.qm") &&
                         QCoreApplication::installTranslator(&m_translator);
        }
    }
    ~Language()
    {
        QCoreApplication::removeTranslator(&m_translator);
        QLocale::setDefault(m_before);
    }
    Language(const Language&) = delete;
    Language& operator=(const Language&) = delete;

    bool isLoaded() const { return m_isLoaded; }

private:
    QLocale m_before;
    QTranslator m_translator;
    bool m_isLoaded = false;
};

// By name: what a person reads differs.
template <typename Widget>
Widget* field(const QObject& parent, const char* name)
{
    auto* widget = parent.findChild<Widget*>(QLatin1String(name));
    if (widget == nullptr)
        qFatal("no field %s", name);
    return widget;
}

// As typed by a person of that language, without separators between groups: one of them was the decimal mark of
// somebody else, so fields no longer take them.
void type(QDoubleSpinBox* box, double value)
{
    box->setFocus();
    box->selectAll();
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    QTest::keyClicks(box, locale.toString(value, 'f', box->decimals()));
    QTest::keyClick(box, Qt::Key_Tab);
}

void editNode(zoHPCGUIW& window)
{
    zoHPCTreeEditGUIW* editor = window.getEditor();
    zoHPCTreeGUIW* tree = window.getTree();
    const QVector<const char*> masterCombos = {"m_sceneCompression", "m_imageCompression",
                                               "m_startStopAction",  "m_stillFrameSupersampling",
                                               "m_parallelFrames",   "m_frameQueueLength"};
    tree->setSelectedItem(tree->master());
    for (const char* name : masterCombos)
        field<QComboBox>(*editor, name)->setCurrentIndex(1);
    tree->addNetwork();
    field<QComboBox>(*editor, "m_networkTypeSelection")->setCurrentIndex(1);
    field<QComboBox>(*editor, "m_networkSpeedSelection")->setCurrentIndex(4);
    field<QSpinBox>(*editor, "m_servicePort")->setValue(12345);
    tree->addHost();
    tree->addHost();
    field<QCheckBox>(*editor, "m_renderNode")->toggle();
    // A network that was described and is no more goes back to its translated name.
    tree->setSelectedItem(tree->master()->items().front());
    field<QLineEdit>(*editor, "m_networkDescription")->setText(QStringLiteral("x"));
    field<QLineEdit>(*editor, "m_networkDescription")->clear();
}

void editProjections(zoHPCDisplayGUII& setup)
{
    auto* type = field<QComboBox>(setup, "m_type");
    for (int row = 0; row < type->count(); ++row) {
        setup.addProjection();
        type->setCurrentIndex(row);
        emit type->activated(row);
        setup.setProjectionType();
        const QList<QDoubleSpinBox*> boxes = setup.findChildren<QDoubleSpinBox*>();
        double value = 1.25;
        for (QDoubleSpinBox* box : boxes) {
            if (box->isVisibleTo(&setup) && box->isEnabled() && box->maximum() > 100.0)
                ::type(box, value += 1000.5);
        }
        const QList<QCheckBox*> checks = setup.findChildren<QCheckBox*>();
        for (QCheckBox* check : checks) {
            if (check->isVisibleTo(&setup))
                check->setChecked(true);
        }
    }
    setup.copyProjection();
    setup.pasteProjection();
}

void editDisplays(zoHPCDisplayGUII& setup)
{
    auto* tree = field<QTreeWidget>(setup, "m_displayTree");
    setup.addDisplay();
    tree->setCurrentItem(tree->topLevelItem(tree->topLevelItemCount() - 1));
    ::type(field<QDoubleSpinBox>(setup, "m_eyeSeparation"), 63.5);
    setup.addWindow();
    auto* position = field<QComboBox>(setup, "m_position");
    auto* eye = field<QComboBox>(setup, "m_eye");
    for (int row = 0; row < std::max(position->count(), eye->count()); ++row) {
        setup.addViewport();
        position->setCurrentIndex(std::min(row, position->count() - 1));
        eye->setCurrentIndex(std::min(row, eye->count() - 1));
    }
    ::type(field<QDoubleSpinBox>(setup, "m_viewportX1"), 0.25);
    tree->setCurrentItem(tree->currentItem()->parent());
    field<QComboBox>(setup, "m_screen")->setCurrentIndex(1);
    field<QComboBox>(setup, "m_renderNode")->setCurrentIndex(1);
}

// What a person does in a new window, and the document that comes of it.
QString documentOfASession()
{
    zoFakeHost host;
    zoHPCGUIW window(nullptr, QStringLiteral("Module"));
    window.setDefaultConfig();
    editNode(window);
    zoHPCDisplayGUII& setup = *window.getDisplayEditor();
    setup.open(window.getTree()->getNodeNames());
    QApplication::setActiveWindow(&setup);
    editProjections(setup);
    editDisplays(setup);
    setup.accept();
    return window.getConfigString();
}

// A document after a window has had it.
QString read(const QString& document)
{
    zoFakeHost host;
    zoHPCGUIW window(nullptr, QStringLiteral("Module"));
    window.setConfigString(document);
    window.getDisplayEditor()->open(window.getTree()->getNodeNames());
    window.getDisplayEditor()->accept();
    return window.getConfigString();
}

QStringList samples()
{
    QStringList files;
    const QDir folder(ZO_DATA_DIR "/cluster");
    const QStringList names = folder.entryList({"*.zhpc"});
    for (const QString& name : names)
        files << folder.filePath(name);
    return files;
}
} // namespace

// Documents are the same in every language.
class tst_zoHPCLanguages final : public zoTestCase
{
    Q_OBJECT

private slots:
    void sameStepsGiveTheSameDocument();
    void documentOfOneLanguageIsReadInTheOther();
    void samplesStayAsTheyAre_data();
    void samplesStayAsTheyAre();
};

void tst_zoHPCLanguages::sameStepsGiveTheSameDocument()
{
    QString english;
    {
        const Language language("en");
        english = documentOfASession();
    }
    const Language language("de");
    QVERIFY(language.isLoaded());
    QCOMPARE(QCoreApplication::translate("zoHPC", "Network"), QStringLiteral("Netzwerk"));

    const QString german = documentOfASession();

    // With fractions and one of each type, or the comparison says little.
    for (const char* part : {"type=\"cave\"", "type=\"plane\"", "type=\"tile\"", "name=\"Projection5\"",
                             "eyeseparation=\"63.5\"", "x1=\"0.25\"", "position=\"custom\"",
                             "eye=\"greenmagenta\"", "screen=\"-1\"", "serviceport=\"12345\"", "001.75\""})
        QVERIFY2(english.contains(part), qPrintable(QLatin1String(part) + QLatin1Char('\n') + english));
    QCOMPARE(german.split('\n'), english.split('\n'));
}

void tst_zoHPCLanguages::documentOfOneLanguageIsReadInTheOther()
{
    QString document;
    QString readInEnglish;
    {
        const Language language("en");
        document = documentOfASession();
        readInEnglish = read(document);
    }
    const Language language("de");
    QVERIFY(language.isLoaded());

    const QString readInGerman = read(document);

    QVERIFY(readInGerman.contains("Projection5"));
    QCOMPARE(readInGerman.split('\n'), readInEnglish.split('\n'));
}

void tst_zoHPCLanguages::samplesStayAsTheyAre_data()
{
    QTest::addColumn<QString>("file");
    for (const QString& file : samples())
        QTest::newRow(qPrintable(QFileInfo(file).fileName())) << file;
}

void tst_zoHPCLanguages::samplesStayAsTheyAre()
{
    QFETCH(QString, file);
    QFile sample(file);
    QVERIFY(sample.open(QIODevice::ReadOnly));
    const QString document = QString::fromUtf8(sample.readAll());
    const Language language("de");
    QVERIFY(language.isLoaded());

    QCOMPARE(read(document).split('\n'), document.split('\n'));
}

ZO_TEST_MAIN(tst_zoHPCLanguages)
#include "tst_zoHPCLanguages.moc"
