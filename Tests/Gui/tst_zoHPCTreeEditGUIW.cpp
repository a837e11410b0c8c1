#include "zoTestCase.h"

#include <zoHPC.h>
#include <zoHPCOptionValues.h>
#include <zoHPCTreeEditGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <QZOCollapsibleFrame.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleOption>
#include <QTextDocument>
#include <QTreeWidget>

#include <functional>
#include <memory>

namespace
{
using Row = QPair<QString, QString>;
using Rows = QList<Row>;

// Adds one column "combo" with the combo boxes of the editor, their options and their tables.
struct Combo
{
    const char* name;
    QString option;
    const zoHPCComboRow* rows;
    int count;
    bool ofMaster;
};

template <std::size_t size>
Combo comboOf(const char* name, const QString& option, const zoHPCComboRow (&rows)[size], bool ofMaster)
{
    return {name, option, rows, int(size), ofMaster};
}

QList<Combo> combos()
{
    namespace Tables = zoHPCOptionValues;
    return {
        comboOf("m_networkTypeSelection", zoHPCOption::NetworkType, Tables::NetworkTypes, false),
        comboOf("m_networkSpeedSelection", zoHPCOption::LinkSpeed, Tables::NetworkSpeeds, false),
        comboOf("m_sceneCompression", zoHPCOption::SceneCompression, Tables::SceneCompressions, true),
        comboOf("m_imageCompression", zoHPCOption::ImageCompression, Tables::ImageCompressions, true),
        comboOf("m_startStopAction", zoHPCOption::StartStopAction, Tables::StartStopActions, true),
        comboOf("m_stillFrameSupersampling", zoHPCOption::StillFrameSupersampling,
                Tables::StillSupersamplings, true),
        comboOf("m_parallelFrames", zoHPCOption::ParallelFrames, Tables::FrameCounts, true),
        comboOf("m_frameQueueLength", zoHPCOption::FramePipelineLength, Tables::FrameCounts, true),
    };
}

QString plain(const QString& richText)
{
    QTextDocument document;
    document.setHtml(richText);
    return document.toPlainText();
}
} // namespace

Q_DECLARE_METATYPE(Rows)
Q_DECLARE_METATYPE(Combo)

// The property editor of the host tree.
class tst_zoHPCTreeEditGUIW final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void comboHasItsRows_data();
    void comboHasItsRows();
    void longestRowIsNotCutOff_data() { comboHasItsRows_data(); }
    void longestRowIsNotCutOff();
    void fieldHasItsLabel_data();
    void fieldHasItsLabel();
    void checkBoxHasItsText_data();
    void checkBoxHasItsText();
    void toolTipIsAsShipped_data();
    void toolTipIsAsShipped();
    void everyFieldHasAToolTip();
    void advancedOptionsStartFolded();
    void tabKeyWalksFromTopToBottom_data();
    void tabKeyWalksFromTopToBottom();

    void pageFollowsTheKindOfItem();
    void nullItemIsIgnored();
    void editorWithoutItemChangesNothing();

    void chosenRowIsStored_data();
    void chosenRowIsStored();
    void storedValueIsShown_data() { chosenRowIsStored_data(); }
    void storedValueIsShown();
    void unknownValueShowsTheDefaultAndIsReplaced_data() { chosenRowIsStored_data(); }
    void unknownValueShowsTheDefaultAndIsReplaced();
    void unknownValueIsReplacedWhereAnotherRowWasShown_data() { chosenRowIsStored_data(); }
    void unknownValueIsReplacedWhereAnotherRowWasShown();
    void valueInOtherCaseIsUnknown();
    void unknownSpeedShowsAutoAndIsStoredEmpty();

    void compressionIsAnnouncedWithTheStoredValue();
    void startStopActionIsAnnouncedAsThreeFlags_data();
    void startStopActionIsAnnouncedAsThreeFlags();
    void countIsAnnouncedAndAutoIsTwo();
    void supersamplingIsAnnouncedAndOffIsZero();
    void networkOptionsAreNotAnnounced();

    void servicePortIsStored_data();
    void servicePortIsStored();
    void storedServicePortIsShown_data();
    void storedServicePortIsShown();
    void typedPortIsInTheItemAtOnce();

    void flagIsStoredAsTrueOrEmpty();
    void flagReadsOnlyTheExactWord_data();
    void flagReadsOnlyTheExactWord();
    void enabledIsStoredAsEmptyOrFalse();
    void renderNodeIsStoredAsEmptyOrFalse();
    void typedHostNameIsInTheTreeAndAnnounced();
    void typedDescriptionIsInTheTree();
    void encryptingShowsInTheTree();

    void showingAnItemLeavesItsOptionsAlone();
    void shownValuesAreAnnouncedWhenTheyDifferFromThoseBefore();
    void showingTheSameValuesAgainAnnouncesNothing();
    void replacedValueIsAnnounced();
    void replacedValueIsToldOnce();
    void everyChangeIsSaidOnce();
    void previousItemKeepsItsValues();
    void newItemGetsNothingOfThePrevious();
    void selectionInTheTreeIsShown();

    void runningClusterLocksTheNetworkPageOnly();
    void networkTypeChangeShowsTheFillerAgain();
    void removedItemCanStillBeEdited();
    void deletedItemIsForgotten();
    void editorOutlivesTheTree();
    void rebuiltTreeIsShownFromItsMaster();

private:
    template <typename Widget>
    Widget* find(const char* name) const
    {
        return m_editor->findChild<Widget*>(QString::fromLatin1(name));
    }
    zoHPCTreeItem* ownerOf(const Combo& combo) const { return combo.ofMaster ? m_master : m_network; }

    std::unique_ptr<zoHPCTreeGUIW> m_tree;
    std::unique_ptr<zoHPCTreeEditGUIW> m_editor;
    zoHPCTreeItem* m_master = nullptr;
    zoHPCTreeItem* m_network = nullptr;
    zoHPCTreeItem* m_node = nullptr;
};

void tst_zoHPCTreeEditGUIW::init()
{
    m_tree = std::make_unique<zoHPCTreeGUIW>();
    m_editor = std::make_unique<zoHPCTreeEditGUIW>();
    m_master = m_tree->master();
    m_network = m_tree->findNetworkByIndex(1);
    m_node = m_tree->getNodeItems().front();
    m_master->clearOptions();
}

void tst_zoHPCTreeEditGUIW::cleanup()
{
    if (m_editor && qEnvironmentVariableIsSet("ZO_TEST_SCREENSHOTS"))
        m_editor->grab().save(qEnvironmentVariable("ZO_TEST_SCREENSHOTS") +
                              QStringLiteral("/zoHPCTreeEditGUIW-") +
                              QString::fromLatin1(QTest::currentTestFunction()) + QStringLiteral(".png"));
    m_editor.reset();
    m_tree.reset();
    zoTestCase::cleanup();
}

void tst_zoHPCTreeEditGUIW::comboHasItsRows_data()
{
    QTest::addColumn<Rows>("rows");

    const Rows counts{{"Auto", ""}, {"1", "1"}, {"2", "2"}, {"3", "3"}, {"4", "4"},
                      {"5", "5"},   {"6", "6"}, {"7", "7"}, {"8", "8"}};
    QTest::newRow("m_networkTypeSelection") << Rows{{"Ethernet", ""}, {"Infiniband", "infiniband"}};
    QTest::newRow("m_networkSpeedSelection") << Rows{{"Auto", ""},
                                                     {"Internet", "wan"},
                                                     {"1 Gigabit", "1g"},
                                                     {"10 Gigabit", "10g"},
                                                     {"10G uplink to 1G", "10g1g"},
                                                     {"40 Gigabit", "40g"},
                                                     {"40G uplink to 10G", "40g10g"}};
    QTest::newRow("m_sceneCompression") << Rows{{"Off", ""}, {"Medium", "fast"}, {"High", "best"}};
    QTest::newRow("m_imageCompression") << Rows{{"Off", ""},
                                                {"Low (Lossless)", "lossless"},
                                                {"Medium (Lossy)", "lossyfast"},
                                                {"High (Lossy)", "lossybest"}};
    QTest::newRow("m_startStopAction") << Rows{{"Do nothing", ""},
                                               {"Downscale Off / On", "downscale"},
                                               {"Raytracing On / Off", "raytracing"},
                                               {"Rendering On / Off", "rendering"}};
    QTest::newRow("m_stillFrameSupersampling") << Rows{{"Off", ""}, {"2x2", "1"}, {"3x3", "2"}, {"4x4", "3"}};
    QTest::newRow("m_parallelFrames") << counts;
    QTest::newRow("m_frameQueueLength") << counts;
}

void tst_zoHPCTreeEditGUIW::comboHasItsRows()
{
    QFETCH(Rows, rows);
    const QComboBox* const combo = find<QComboBox>(QTest::currentDataTag());
    QVERIFY(combo != nullptr);

    Rows shown;
    for (int i = 0; i < combo->count(); ++i)
        shown.append({combo->itemText(i), combo->itemData(i).toString()});

    QCOMPARE(shown, rows);
    QVERIFY(!combo->isEditable());
}

void tst_zoHPCTreeEditGUIW::longestRowIsNotCutOff()
{
    const QComboBox* const combo = find<QComboBox>(QTest::currentDataTag());
    find<QZOCollapsibleFrame>("m_advancedMasterOptions")->setCollapsed(false);
    m_editor->setItem(combo->objectName().startsWith(QLatin1String("m_network")) ? m_network : m_master);
    m_editor->show();

    m_editor->resize(1, 1);
    QCoreApplication::processEvents();

    QStyleOptionComboBox option;
    option.initFrom(combo);
    const int room = combo->style()
                         ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo)
                         .width();
    for (int i = 0; i < combo->count(); ++i)
        QVERIFY2(combo->fontMetrics().horizontalAdvance(combo->itemText(i)) <= room,
                 qPrintable(combo->itemText(i)));
}

void tst_zoHPCTreeEditGUIW::fieldHasItsLabel_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("m_sceneCompression") << "Data compression";
    QTest::newRow("m_imageCompression") << "Image compression";
    QTest::newRow("m_startStopAction") << "Start/Stop action";
    QTest::newRow("m_stillFrameSupersampling") << "Still supersampling";
    QTest::newRow("m_parallelFrames") << "Parallel frames";
    QTest::newRow("m_frameQueueLength") << "Frame buffers";
    QTest::newRow("m_networkTypeSelection") << "Network type";
    QTest::newRow("m_networkSpeedSelection") << "Network speed";
    QTest::newRow("m_servicePort") << "Service port";
    QTest::newRow("m_networkDescription") << "Description";
    QTest::newRow("m_hostName") << "Name";
}

void tst_zoHPCTreeEditGUIW::fieldHasItsLabel()
{
    QFETCH(QString, text);
    const QWidget* const field = find<QWidget>(QTest::currentDataTag());
    QVERIFY(field != nullptr);

    const QList<QLabel*> labels = m_editor->findChildren<QLabel*>();
    QStringList ofField;
    for (const QLabel* label : labels) {
        if (label->buddy() == field)
            ofField << label->text();
    }

    QCOMPARE(ofField, QStringList{text});
}

void tst_zoHPCTreeEditGUIW::checkBoxHasItsText_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("m_homogeneousCluster") << "Homogeneous cluster";
    QTest::newRow("m_networkEnabled") << "Enabled";
    QTest::newRow("m_encrypted") << "Encrypted";
    QTest::newRow("m_hostEnabled") << "Enabled";
    QTest::newRow("m_renderNode") << "Use for Raytracing";
}

void tst_zoHPCTreeEditGUIW::checkBoxHasItsText()
{
    QFETCH(QString, text);
    const QCheckBox* const box = find<QCheckBox>(QTest::currentDataTag());
    QVERIFY(box != nullptr);

    QCOMPARE(box->text(), text);
}

void tst_zoHPCTreeEditGUIW::toolTipIsAsShipped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isRich");

    QTest::newRow("m_startStopAction")
        << "The selected aciton will be performed on cluster start and reverted on cluster stop" << true;
    QTest::newRow("m_stillFrameSupersampling")
        << "During still antialiasing the image can be rendered in a higher resolution. This can eventually "
           "reduce the noice but will increase network traffic. "
        << true;
    QTest::newRow("m_parallelFrames")
        << "Multiple frames are rendered in parallel by a different group of compute nodes. This can be used "
           "to "
           "get a better cluster scalability with a large number of compute nodes."
        << true;
    QTest::newRow("m_frameQueueLength")
        << "On slow network connections the framerate can be improved by using "
           "multiple rendering buffers."
        << true;
    QTest::newRow("m_homogeneousCluster")
        << "All nodes of a homogeneous cluster have the same performance" << true;
    QTest::newRow("m_hostName") << "Enter host name or ip address" << false;
    QTest::newRow("m_renderNode") << "Use this node in raytracing mode" << false;
}

void tst_zoHPCTreeEditGUIW::toolTipIsAsShipped()
{
    QFETCH(QString, text);
    QFETCH(bool, isRich);

    const QString toolTip = find<QWidget>(QTest::currentDataTag())->toolTip();

    if (isRich) {
        QCOMPARE(toolTip,
                 QStringLiteral("<html><head/><body><p>") + text + QStringLiteral("</p></body></html>"));
        QCOMPARE(plain(toolTip).trimmed(), text.trimmed());
    } else {
        QCOMPARE(toolTip, text);
    }
}

void tst_zoHPCTreeEditGUIW::everyFieldHasAToolTip()
{
    QWidgetList fields;
    for (QComboBox* combo : m_editor->findChildren<QComboBox*>())
        fields << combo;
    for (QCheckBox* box : m_editor->findChildren<QCheckBox*>())
        fields << box;
    fields << find<QWidget>("m_servicePort") << find<QWidget>("m_networkDescription")
           << find<QWidget>("m_hostName");

    QCOMPARE(fields.size(), 16);
    for (const QWidget* field : qAsConst(fields))
        QVERIFY2(!field->toolTip().isEmpty(), qPrintable(field->objectName()));
}

void tst_zoHPCTreeEditGUIW::advancedOptionsStartFolded()
{
    QZOCollapsibleFrame* const advanced = find<QZOCollapsibleFrame>("m_advancedMasterOptions");
    QVERIFY(advanced != nullptr);
    QCOMPARE(advanced->title(), QStringLiteral("Advanced"));
    m_editor->setItem(m_master);
    m_editor->show();
    QVERIFY(advanced->isCollapsed());
    QVERIFY(!find<QWidget>("m_parallelFrames")->isVisible());

    QTest::mouseClick(advanced, Qt::LeftButton, Qt::NoModifier, QPoint(20, 6));

    QVERIFY(find<QWidget>("m_parallelFrames")->isVisible());
    QVERIFY(find<QWidget>("m_frameQueueLength")->isVisible());
    QVERIFY(find<QWidget>("m_homogeneousCluster")->isVisible());
    QCOMPARE(find<QZOCollapsibleFrame>("m_hostSettings")->title(), QStringLiteral("Compute node"));
    QVERIFY(find<QZOCollapsibleFrame>("m_networkSettings") != nullptr);
}

void tst_zoHPCTreeEditGUIW::tabKeyWalksFromTopToBottom_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("master") << 0;
    QTest::newRow("network") << 1;
    QTest::newRow("node") << 2;
}

void tst_zoHPCTreeEditGUIW::tabKeyWalksFromTopToBottom()
{
    QFETCH(int, kind);
    zoHPCTreeItem* const items[] = {m_master, m_network, m_node};
    m_editor->setItem(items[kind]);
    find<QZOCollapsibleFrame>("m_advancedMasterOptions")->setCollapsed(false);
    m_editor->show();
    QVERIFY(QTest::qWaitForWindowActive(m_editor.get()));
    const char* const first[] = {"m_masterOptions", "m_networkSettings", "m_hostSettings"};
    find<QWidget>(first[kind])->setFocus();
    QWidget* const start = QApplication::focusWidget();

    int steps = 0;
    int height = -1;
    for (QWidget* focus = start; focus != start || steps == 0; focus = QApplication::focusWidget()) {
        const int top = focus->mapTo(m_editor.get(), QPoint(0, 0)).y();
        QVERIFY2(top > height, qPrintable(focus->objectName()));
        height = top;
        ++steps;
        QTest::keyClick(focus, Qt::Key_Tab);
    }

    const int fields[] = {9, 7, 4};
    QCOMPARE(steps, fields[kind]);
}

void tst_zoHPCTreeEditGUIW::pageFollowsTheKindOfItem()
{
    const QStackedWidget* const pages = find<QStackedWidget>("m_stackedEditPanel");
    QCOMPARE(pages->count(), 3);

    m_editor->setItem(m_node);
    QCOMPARE(pages->currentIndex(), 2);
    m_editor->setItem(m_network);
    QCOMPARE(pages->currentIndex(), 1);
    m_editor->setItem(m_master);

    QCOMPARE(pages->currentIndex(), 0);
    QVERIFY(pages->widget(0)->isAncestorOf(find<QWidget>("m_homogeneousCluster")));
    QVERIFY(pages->widget(1)->isAncestorOf(find<QWidget>("m_networkOptionsFillFrame")));
    QVERIFY(pages->widget(2)->isAncestorOf(find<QWidget>("m_hostName")));
}

void tst_zoHPCTreeEditGUIW::nullItemIsIgnored()
{
    m_editor->setItem(m_node);

    m_editor->setItem(nullptr);

    QCOMPARE(find<QStackedWidget>("m_stackedEditPanel")->currentIndex(), 2);
    find<QLineEdit>("m_hostName")->setText(QStringLiteral("still"));
    QCOMPARE(m_node->hostName(), QStringLiteral("still"));
}

void tst_zoHPCTreeEditGUIW::editorWithoutItemChangesNothing()
{
    QSignalSpy announced(m_editor.get(), &zoHPCTreeEditGUIW::sceneCompressionChanged);
    QSignalSpy renamed(m_editor.get(), &zoHPCTreeEditGUIW::hostChanged);

    for (const Combo& combo : combos())
        find<QComboBox>(combo.name)->setCurrentIndex(1);
    for (QCheckBox* box : m_editor->findChildren<QCheckBox*>())
        box->toggle();
    find<QSpinBox>("m_servicePort")->setValue(9000);
    find<QLineEdit>("m_hostName")->setText(QStringLiteral("x"));
    find<QLineEdit>("m_networkDescription")->setText(QStringLiteral("x"));

    QCOMPARE(announced.size(), 0);
    QCOMPARE(renamed.size(), 0);
}

void tst_zoHPCTreeEditGUIW::chosenRowIsStored_data()
{
    QTest::addColumn<Combo>("combo");

    for (const Combo& combo : combos())
        QTest::newRow(combo.name) << combo;
}

void tst_zoHPCTreeEditGUIW::chosenRowIsStored()
{
    QFETCH(Combo, combo);
    zoHPCTreeItem* const item = ownerOf(combo);
    m_editor->setItem(item);
    QComboBox* const box = find<QComboBox>(combo.name);

    for (int row = combo.count - 1; row >= 0; --row) {
        box->setCurrentIndex(row);
        QCOMPARE(item->getOption(combo.option), QString::fromLatin1(combo.rows[row].value));
    }

    // A person's way.
    m_editor->show();
    find<QZOCollapsibleFrame>("m_advancedMasterOptions")->setCollapsed(false);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(item->getOption(combo.option), QString::fromLatin1(combo.rows[1].value));
}

void tst_zoHPCTreeEditGUIW::storedValueIsShown()
{
    QFETCH(Combo, combo);
    zoHPCTreeItem* const item = ownerOf(combo);

    for (int row = combo.count - 1; row >= 0; --row) {
        item->setOption(combo.option, QString::fromLatin1(combo.rows[row].value));
        m_editor->setItem(item);
        QCOMPARE(find<QComboBox>(combo.name)->currentIndex(), row);
        QCOMPARE(item->getOption(combo.option), QString::fromLatin1(combo.rows[row].value));
    }
}

void tst_zoHPCTreeEditGUIW::unknownValueShowsTheDefaultAndIsReplaced()
{
    QFETCH(Combo, combo);
    zoHPCTreeItem* const item = ownerOf(combo);
    item->setOption(combo.option, QStringLiteral("no such value"));

    m_editor->setItem(item);

    QCOMPARE(find<QComboBox>(combo.name)->currentIndex(), 0);
    QCOMPARE(item->getOption(combo.option), QString());
}

void tst_zoHPCTreeEditGUIW::unknownValueIsReplacedWhereAnotherRowWasShown()
{
    QFETCH(Combo, combo);
    zoHPCTreeItem* const item = ownerOf(combo);
    item->setOption(combo.option, QString::fromLatin1(combo.rows[1].value));
    m_editor->setItem(item);
    item->setOption(combo.option, QStringLiteral("no such value"));

    m_editor->setItem(item);

    QCOMPARE(find<QComboBox>(combo.name)->currentIndex(), 0);
    QCOMPARE(item->getOption(combo.option), QString());
}

void tst_zoHPCTreeEditGUIW::valueInOtherCaseIsUnknown()
{
    m_network->setOption(zoHPCOption::NetworkType, QStringLiteral("Infiniband"));

    m_editor->setItem(m_network);

    QCOMPARE(find<QComboBox>("m_networkTypeSelection")->currentIndex(), 0);
    QCOMPARE(m_network->getOption(zoHPCOption::NetworkType), QString());
}

void tst_zoHPCTreeEditGUIW::unknownSpeedShowsAutoAndIsStoredEmpty()
{
    m_network->setOption(zoHPCOption::LinkSpeed, QStringLiteral("100g"));

    m_editor->setItem(m_network);

    QCOMPARE(find<QComboBox>("m_networkSpeedSelection")->currentText(), QStringLiteral("Auto"));
    QVERIFY(!m_network->hasOption(zoHPCOption::LinkSpeed));
}

void tst_zoHPCTreeEditGUIW::compressionIsAnnouncedWithTheStoredValue()
{
    m_editor->setItem(m_master);
    QSignalSpy scene(m_editor.get(), &zoHPCTreeEditGUIW::sceneCompressionChanged);
    QSignalSpy image(m_editor.get(), &zoHPCTreeEditGUIW::imageCompressionChanged);

    find<QComboBox>("m_sceneCompression")->setCurrentIndex(2);
    find<QComboBox>("m_imageCompression")->setCurrentIndex(1);
    find<QComboBox>("m_imageCompression")->setCurrentIndex(0);

    QCOMPARE(scene, (QList<QList<QVariant>>{{QStringLiteral("best")}}));
    QCOMPARE(image, (QList<QList<QVariant>>{{QStringLiteral("lossless")}, {QString()}}));
}

void tst_zoHPCTreeEditGUIW::startStopActionIsAnnouncedAsThreeFlags_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("downscale");
    QTest::addColumn<bool>("raytracing");
    QTest::addColumn<bool>("rendering");

    QTest::newRow("nothing") << 0 << false << false << false;
    QTest::newRow("downscale") << 1 << true << false << false;
    QTest::newRow("raytracing") << 2 << false << true << false;
    QTest::newRow("rendering") << 3 << false << false << true;
}

void tst_zoHPCTreeEditGUIW::startStopActionIsAnnouncedAsThreeFlags()
{
    QFETCH(int, row);
    QFETCH(bool, downscale);
    QFETCH(bool, raytracing);
    QFETCH(bool, rendering);
    m_editor->setItem(m_master);
    QComboBox* const combo = find<QComboBox>("m_startStopAction");
    combo->setCurrentIndex((row + 1) % 4);
    QSignalSpy changed(m_editor.get(), &zoHPCTreeEditGUIW::startStopActionsChanged);

    combo->setCurrentIndex(row);

    QCOMPARE(changed, (QList<QList<QVariant>>{{downscale, raytracing, rendering}}));
}

void tst_zoHPCTreeEditGUIW::countIsAnnouncedAndAutoIsTwo()
{
    m_editor->setItem(m_master);
    QSignalSpy frames(m_editor.get(), &zoHPCTreeEditGUIW::parallelFramesChanged);
    QSignalSpy length(m_editor.get(), &zoHPCTreeEditGUIW::frameQueueLengthChanged);

    find<QComboBox>("m_parallelFrames")->setCurrentIndex(8);
    find<QComboBox>("m_parallelFrames")->setCurrentIndex(0);
    find<QComboBox>("m_frameQueueLength")->setCurrentIndex(1);
    find<QComboBox>("m_frameQueueLength")->setCurrentIndex(0);

    QCOMPARE(frames, (QList<QList<QVariant>>{{8}, {2}}));
    QCOMPARE(length, (QList<QList<QVariant>>{{1}, {2}}));
    QCOMPARE(m_master->getOption(QStringLiteral("framequeuelength")), QString());
}

void tst_zoHPCTreeEditGUIW::supersamplingIsAnnouncedAndOffIsZero()
{
    m_editor->setItem(m_master);
    QSignalSpy level(m_editor.get(), &zoHPCTreeEditGUIW::stillFrameSupersamplingChanged);

    find<QComboBox>("m_stillFrameSupersampling")->setCurrentIndex(3);
    find<QComboBox>("m_stillFrameSupersampling")->setCurrentIndex(0);

    QCOMPARE(level, (QList<QList<QVariant>>{{3}, {0}}));
}

void tst_zoHPCTreeEditGUIW::networkOptionsAreNotAnnounced()
{
    m_editor->setItem(m_network);
    QSignalSpy scene(m_editor.get(), &zoHPCTreeEditGUIW::sceneCompressionChanged);
    QSignalSpy image(m_editor.get(), &zoHPCTreeEditGUIW::imageCompressionChanged);
    QSignalSpy host(m_editor.get(), &zoHPCTreeEditGUIW::hostChanged);

    find<QComboBox>("m_networkTypeSelection")->setCurrentIndex(1);
    find<QComboBox>("m_networkSpeedSelection")->setCurrentIndex(3);
    find<QSpinBox>("m_servicePort")->setValue(9000);
    find<QCheckBox>("m_encrypted")->setChecked(true);
    find<QCheckBox>("m_networkEnabled")->setChecked(false);
    find<QLineEdit>("m_networkDescription")->setText(QStringLiteral("x"));

    QCOMPARE(scene.size() + image.size() + host.size(), 0);
}

void tst_zoHPCTreeEditGUIW::servicePortIsStored_data()
{
    QTest::addColumn<int>("port");
    QTest::addColumn<QString>("stored");

    QTest::newRow("default-is-empty") << 8889 << "";
    QTest::newRow("next-to-it") << 8890 << "8890";
    QTest::newRow("lowest") << 1 << "1";
    QTest::newRow("highest") << 65535 << "65535";
}

void tst_zoHPCTreeEditGUIW::servicePortIsStored()
{
    QFETCH(int, port);
    QFETCH(QString, stored);
    m_network->setOption(zoHPCOption::ServicePort, QStringLiteral("4711"));
    m_editor->setItem(m_network);
    QCOMPARE(find<QSpinBox>("m_servicePort")->value(), 4711);

    find<QSpinBox>("m_servicePort")->setValue(port);

    QCOMPARE(m_network->getOption(zoHPCOption::ServicePort), stored);
}

void tst_zoHPCTreeEditGUIW::storedServicePortIsShown_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("shown");

    QTest::newRow("empty") << "" << 8889;
    QTest::newRow("number") << "4711" << 4711;
    QTest::newRow("default-written-out") << "8889" << 8889;
    QTest::newRow("no-number") << "abc" << 8889;
    QTest::newRow("zero") << "0" << 8889;
    QTest::newRow("negative") << "-5" << 8889;
    QTest::newRow("too-large-for-a-port") << "70000" << 8889;
    QTest::newRow("too-large-for-a-number") << "99999999999" << 8889;
}

void tst_zoHPCTreeEditGUIW::storedServicePortIsShown()
{
    QFETCH(QString, stored);
    QFETCH(int, shown);
    zoHPCTreeItem* const other = m_tree->createNetwork(m_master, -1);

    // Whatever the editor showed before.
    for (const char* before : {"8889", "1234", "65535"}) {
        other->setOption(zoHPCOption::ServicePort, QString::fromLatin1(before));
        m_editor->setItem(other);
        m_network->setOption(zoHPCOption::ServicePort, stored);

        m_editor->setItem(m_network);

        QCOMPARE(find<QSpinBox>("m_servicePort")->value(), shown);
        // Looking at a port changes none, also one that the field cannot show.
        QCOMPARE(m_network->getOption(zoHPCOption::ServicePort), stored);
    }
    find<QSpinBox>("m_servicePort")->setValue(4712);
    QCOMPARE(m_network->getOption(zoHPCOption::ServicePort), QStringLiteral("4712"));
}

void tst_zoHPCTreeEditGUIW::typedPortIsInTheItemAtOnce()
{
    m_editor->setItem(m_network);
    QSpinBox* const port = find<QSpinBox>("m_servicePort");
    m_editor->show();
    port->setFocus();
    port->selectAll();

    QTest::keyClicks(port, QStringLiteral("12345"));

    QCOMPARE(m_network->getOption(zoHPCOption::ServicePort), QStringLiteral("12345"));
}

void tst_zoHPCTreeEditGUIW::flagIsStoredAsTrueOrEmpty()
{
    m_editor->setItem(m_network);
    find<QCheckBox>("m_encrypted")->click();
    QCOMPARE(m_network->getOption(zoHPCOption::Encrypted), QStringLiteral("true"));
    find<QCheckBox>("m_encrypted")->click();
    QCOMPARE(m_network->getOption(zoHPCOption::Encrypted), QString());

    m_editor->setItem(m_master);
    find<QCheckBox>("m_homogeneousCluster")->setChecked(true);
    QCOMPARE(m_master->getOption(zoHPCOption::Homogeneous), QStringLiteral("true"));
    find<QCheckBox>("m_homogeneousCluster")->setChecked(false);
    QCOMPARE(m_master->getOption(zoHPCOption::Homogeneous), QString());
}

void tst_zoHPCTreeEditGUIW::flagReadsOnlyTheExactWord_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("checked");

    QTest::newRow("true") << "true" << true;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("capitals") << "TRUE" << false;
    QTest::newRow("one") << "1" << false;
    QTest::newRow("blank-behind") << "true " << false;
}

void tst_zoHPCTreeEditGUIW::flagReadsOnlyTheExactWord()
{
    QFETCH(QString, stored);
    QFETCH(bool, checked);
    m_network->setOption(zoHPCOption::Encrypted, stored);
    m_master->setOption(zoHPCOption::Homogeneous, stored);

    m_editor->setItem(m_network);
    QCOMPARE(find<QCheckBox>("m_encrypted")->isChecked(), checked);
    m_editor->setItem(m_master);
    QCOMPARE(find<QCheckBox>("m_homogeneousCluster")->isChecked(), checked);

    // What was looked at is what it was, until somebody touches it.
    QCOMPARE(m_network->getOption(zoHPCOption::Encrypted), stored);
    QCOMPARE(m_master->getOption(zoHPCOption::Homogeneous), stored);
    find<QCheckBox>("m_homogeneousCluster")->click();
    QCOMPARE(m_master->getOption(zoHPCOption::Homogeneous), checked ? QString() : QStringLiteral("true"));
}

void tst_zoHPCTreeEditGUIW::enabledIsStoredAsEmptyOrFalse()
{
    const QList<QPair<zoHPCTreeItem*, const char*>> boxes{{m_network, "m_networkEnabled"},
                                                          {m_node, "m_hostEnabled"}};
    for (const auto& [item, name] : boxes) {
        m_editor->setItem(item);
        QVERIFY(find<QCheckBox>(name)->isChecked());

        find<QCheckBox>(name)->setChecked(false);
        QCOMPARE(item->getOption(zoHPCOption::Enabled), QStringLiteral("false"));
        m_editor->setItem(m_master);
        m_editor->setItem(item);
        QVERIFY(!find<QCheckBox>(name)->isChecked());

        find<QCheckBox>(name)->setChecked(true);
        QCOMPARE(item->getOption(zoHPCOption::Enabled), QString());
    }
}

void tst_zoHPCTreeEditGUIW::renderNodeIsStoredAsEmptyOrFalse()
{
    m_editor->setItem(m_node);
    QVERIFY(find<QCheckBox>("m_renderNode")->isChecked());

    find<QCheckBox>("m_renderNode")->setChecked(false);
    QCOMPARE(m_node->getOption(zoHPCOption::RenderNode), QStringLiteral("false"));
    find<QCheckBox>("m_renderNode")->setChecked(true);
    QCOMPARE(m_node->getOption(zoHPCOption::RenderNode), QString());
}

void tst_zoHPCTreeEditGUIW::typedHostNameIsInTheTreeAndAnnounced()
{
    m_editor->setItem(m_node);
    QSignalSpy changed(m_editor.get(), &zoHPCTreeEditGUIW::hostChanged);
    QLineEdit* const name = find<QLineEdit>("m_hostName");
    m_editor->show();
    name->setFocus();
    name->selectAll();

    QTest::keyClicks(name, QStringLiteral("r%1"));

    QCOMPARE(m_node->hostName(), QStringLiteral("r%1"));
    QCOMPARE(m_node->text(0), QStringLiteral("r%1"));
    QCOMPARE(changed.size(), 3);
}

void tst_zoHPCTreeEditGUIW::typedDescriptionIsInTheTree()
{
    m_editor->setItem(m_network);
    QLineEdit* const description = find<QLineEdit>("m_networkDescription");

    description->setText(QStringLiteral("left %1"));
    QCOMPARE(m_network->getOption(zoHPCOption::Description), QStringLiteral("left %1"));
    QCOMPARE(m_network->text(0), QStringLiteral("Network (left %1)"));
    description->clear();

    QCOMPARE(m_network->text(0), QStringLiteral("Network"));
}

void tst_zoHPCTreeEditGUIW::encryptingShowsInTheTree()
{
    m_editor->setItem(m_network);
    const QImage open = m_network->icon(0).pixmap(32).toImage();

    find<QCheckBox>("m_encrypted")->setChecked(true);

    QVERIFY(m_network->icon(0).pixmap(32).toImage() != open);
}

void tst_zoHPCTreeEditGUIW::showingAnItemLeavesItsOptionsAlone()
{
    m_master->setOption(zoHPCOption::SceneCompression, QStringLiteral("fast"));
    m_network->setOption(zoHPCOption::LinkSpeed, QStringLiteral("40g"));
    m_network->setOption(zoHPCOption::Description, QStringLiteral("two\nlines"));
    m_network->setOption(QStringLiteral("unknown"), QStringLiteral("kept"));
    m_network->setIsEnabled(false);
    m_node->setHostName(QString(40000, QLatin1Char('x')));
    m_node->setIsRenderNode(false);
    const QList<zoHPCTreeItem*> items{m_master, m_network, m_node};
    QList<std::map<QString, QString>> before;
    for (zoHPCTreeItem* item : items)
        before.append(item->getOptions());

    for (int round = 0; round < 3; ++round) {
        for (zoHPCTreeItem* item : items)
            m_editor->setItem(item);
    }

    for (int i = 0; i < items.size(); ++i)
        QVERIFY(items.at(i)->getOptions() == before.at(i));
    QCOMPARE(m_node->hostName().size(), 40000);
}

void tst_zoHPCTreeEditGUIW::shownValuesAreAnnouncedWhenTheyDifferFromThoseBefore()
{
    m_editor->setItem(m_master);
    QSignalSpy scene(m_editor.get(), &zoHPCTreeEditGUIW::sceneCompressionChanged);
    QSignalSpy image(m_editor.get(), &zoHPCTreeEditGUIW::imageCompressionChanged);
    QSignalSpy action(m_editor.get(), &zoHPCTreeEditGUIW::startStopActionsChanged);
    QSignalSpy frames(m_editor.get(), &zoHPCTreeEditGUIW::parallelFramesChanged);
    QSignalSpy length(m_editor.get(), &zoHPCTreeEditGUIW::frameQueueLengthChanged);
    QSignalSpy level(m_editor.get(), &zoHPCTreeEditGUIW::stillFrameSupersamplingChanged);
    QSignalSpy host(m_editor.get(), &zoHPCTreeEditGUIW::hostChanged);

    // The values come from a document that was loaded.
    for (const Combo& combo : combos()) {
        if (combo.ofMaster)
            m_master->setOption(combo.option, QString::fromLatin1(combo.rows[1].value));
    }
    m_editor->setItem(m_master);
    m_editor->setItem(m_node);

    QCOMPARE(scene, (QList<QList<QVariant>>{{QStringLiteral("fast")}}));
    QCOMPARE(image, (QList<QList<QVariant>>{{QStringLiteral("lossless")}}));
    QCOMPARE(action, (QList<QList<QVariant>>{{true, false, false}}));
    QCOMPARE(frames, (QList<QList<QVariant>>{{1}}));
    QCOMPARE(length, (QList<QList<QVariant>>{{1}}));
    QCOMPARE(level, (QList<QList<QVariant>>{{1}}));
    QCOMPARE(host.size(), 1);
}

void tst_zoHPCTreeEditGUIW::showingTheSameValuesAgainAnnouncesNothing()
{
    for (const Combo& combo : combos()) {
        if (combo.ofMaster)
            m_master->setOption(combo.option, QString::fromLatin1(combo.rows[1].value));
    }
    for (zoHPCTreeItem* item : {m_master, m_network, m_node})
        m_editor->setItem(item);
    QList<std::shared_ptr<QSignalSpy>> spies;
    const QMetaObject* const meta = m_editor->metaObject();
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        if (meta->method(i).methodType() == QMetaMethod::Signal)
            spies.append(std::make_shared<QSignalSpy>(m_editor.get(), meta->method(i)));
    }
    QCOMPARE(spies.size(), 8);

    for (zoHPCTreeItem* item : {m_master, m_network, m_node, m_master})
        m_editor->setItem(item);

    for (const auto& spy : spies)
        QCOMPARE(spy->size(), 0);
    QCOMPARE(find<QComboBox>("m_parallelFrames")->currentIndex(), 1);
}

void tst_zoHPCTreeEditGUIW::replacedValueIsAnnounced()
{
    m_master->setOption(zoHPCOption::ImageCompression, QStringLiteral("no such value"));
    QSignalSpy changed(m_editor.get(), &zoHPCTreeEditGUIW::imageCompressionChanged);

    m_editor->setItem(m_master);
    m_editor->setItem(m_master);

    QCOMPARE(changed, (QList<QList<QVariant>>{{QString()}}));
}

void tst_zoHPCTreeEditGUIW::replacedValueIsToldOnce()
{
    m_master->setOption(zoHPCOption::SceneCompression, QStringLiteral("ultra"));
    m_network->setOption(zoHPCOption::LinkSpeed, QStringLiteral("5g %1"));
    m_network->setOption(zoHPCOption::Encrypted, QStringLiteral("1"));

    for (int round = 0; round < 2; ++round) {
        for (zoHPCTreeItem* item : {m_master, m_network, m_node})
            m_editor->setItem(item);
    }

    QCOMPARE(messages().filter(QStringLiteral("replaced")),
             (QStringList{QStringLiteral("Option \"scenecompression\" of the cluster: the unknown value "
                                         "\"ultra\" is replaced by the default."),
                          QStringLiteral("Option \"speed\" of Network:/0/: the unknown value \"5g %1\" is "
                                         "replaced by the default.")}));
}

void tst_zoHPCTreeEditGUIW::everyChangeIsSaidOnce()
{
    QSignalSpy changed(m_editor.get(), &zoHPCTreeEditGUIW::changed);
    const auto isSaid = [&changed](const std::function<void()>& change) {
        changed.clear();
        change();
        return changed.size() == 1;
    };

    m_editor->setItem(m_master);
    QVERIFY(isSaid([this] { find<QComboBox>("m_imageCompression")->setCurrentIndex(2); }));
    QVERIFY(isSaid([this] { find<QCheckBox>("m_homogeneousCluster")->toggle(); }));
    m_editor->setItem(m_network);
    QVERIFY(isSaid([this] { find<QComboBox>("m_networkSpeedSelection")->setCurrentIndex(2); }));
    QVERIFY(isSaid([this] { find<QSpinBox>("m_servicePort")->setValue(77); }));
    QVERIFY(isSaid([this] { find<QCheckBox>("m_encrypted")->toggle(); }));
    QVERIFY(isSaid([this] { find<QCheckBox>("m_networkEnabled")->toggle(); }));
    QVERIFY(isSaid([this] { find<QLineEdit>("m_networkDescription")->setText(QStringLiteral("farm")); }));
    m_editor->setItem(m_node);
    QVERIFY(isSaid([this] { find<QCheckBox>("m_hostEnabled")->toggle(); }));
    QVERIFY(isSaid([this] { find<QCheckBox>("m_renderNode")->toggle(); }));
    QVERIFY(isSaid([this] { find<QLineEdit>("m_hostName")->setText(QStringLiteral("other")); }));

    // Looking at items is none.
    changed.clear();
    for (zoHPCTreeItem* item : {m_master, m_network, m_node, m_master})
        m_editor->setItem(item);
    QCOMPARE(changed.size(), 0);
    // But a value that no row shows is replaced.
    m_network->setOption(zoHPCOption::LinkSpeed, QStringLiteral("no such value"));
    QVERIFY(isSaid([this] { m_editor->setItem(m_network); }));
}

void tst_zoHPCTreeEditGUIW::previousItemKeepsItsValues()
{
    zoHPCTreeItem* const other = m_tree->createNetwork(m_master, -1);
    m_network->setOption(zoHPCOption::LinkSpeed, QStringLiteral("40g"));
    m_network->setOption(zoHPCOption::ServicePort, QStringLiteral("9000"));
    m_network->setOption(zoHPCOption::Description, QStringLiteral("first"));
    m_network->setOption(zoHPCOption::Encrypted, QStringLiteral("true"));
    m_network->setIsEnabled(false);
    m_editor->setItem(m_network);

    m_editor->setItem(other);

    QCOMPARE(m_network->getOption(zoHPCOption::LinkSpeed), QStringLiteral("40g"));
    QCOMPARE(m_network->getOption(zoHPCOption::ServicePort), QStringLiteral("9000"));
    QCOMPARE(m_network->getOption(zoHPCOption::Description), QStringLiteral("first"));
    QVERIFY(m_network->isEncrypted());
    QVERIFY(!m_network->isEnabled());
}

void tst_zoHPCTreeEditGUIW::newItemGetsNothingOfThePrevious()
{
    zoHPCTreeItem* const other = m_tree->createNetwork(m_master, -1);
    const std::map<QString, QString> fresh = other->getOptions();
    m_network->setOption(zoHPCOption::NetworkType, QStringLiteral("infiniband"));
    m_network->setOption(zoHPCOption::LinkSpeed, QStringLiteral("40g"));
    m_network->setOption(zoHPCOption::ServicePort, QStringLiteral("9000"));
    m_network->setOption(zoHPCOption::Description, QStringLiteral("first"));
    m_network->setOption(zoHPCOption::Encrypted, QStringLiteral("true"));
    m_network->setIsEnabled(false);
    m_editor->setItem(m_network);

    m_editor->setItem(other);

    QVERIFY(other->getOptions() == fresh);
    QVERIFY(find<QCheckBox>("m_networkEnabled")->isChecked());
    QVERIFY(!find<QCheckBox>("m_encrypted")->isChecked());
    QCOMPARE(find<QSpinBox>("m_servicePort")->value(), 8889);
    QCOMPARE(find<QLineEdit>("m_networkDescription")->text(), QString());
    QCOMPARE(find<QComboBox>("m_networkSpeedSelection")->currentIndex(), 0);
}

void tst_zoHPCTreeEditGUIW::selectionInTheTreeIsShown()
{
    // As the window connects them.
    QVERIFY(connect(m_tree.get(), SIGNAL(selectedItemChanged(zoHPCTreeItem*)), m_editor.get(),
                                         SLOT(setItem(zoHPCTreeItem*))));

    m_tree->setSelectedItem(m_node);

    QCOMPARE(find<QStackedWidget>("m_stackedEditPanel")->currentIndex(), 2);
    QCOMPARE(find<QLineEdit>("m_hostName")->text(), QStringLiteral("localhost"));
}

void tst_zoHPCTreeEditGUIW::runningClusterLocksTheNetworkPageOnly()
{
    m_editor->setIsRunning(true);
    QVERIFY(!find<QWidget>("m_networkSettings")->isEnabled());
    QVERIFY(!find<QWidget>("m_servicePort")->isEnabled());
    QVERIFY(find<QWidget>("m_sceneCompression")->isEnabled());
    QVERIFY(find<QWidget>("m_hostName")->isEnabled());

    m_editor->setIsRunning(false);
    QVERIFY(find<QWidget>("m_servicePort")->isEnabled());
}

void tst_zoHPCTreeEditGUIW::networkTypeChangeShowsTheFillerAgain()
{
    m_editor->setItem(m_network);
    m_editor->show();
    QWidget* const filler = find<QWidget>("m_networkOptionsFillFrame");
    struct Counter : QObject
    {
        bool eventFilter(QObject*, QEvent* event) override
        {
            shown += event->type() == QEvent::ShowToParent ? 1 : 0;
            hidden += event->type() == QEvent::HideToParent ? 1 : 0;
            return false;
        }
        int shown = 0;
        int hidden = 0;
    } counter;
    filler->installEventFilter(&counter);

    find<QComboBox>("m_networkTypeSelection")->setCurrentIndex(1);

    QCOMPARE(counter.hidden, 1);
    QCOMPARE(counter.shown, 1);
    QVERIFY(filler->isVisible());
}

void tst_zoHPCTreeEditGUIW::removedItemCanStillBeEdited()
{
    m_tree->setSelectedItem(m_node);
    m_editor->setItem(m_node);

    m_tree->removeItem();

    find<QLineEdit>("m_hostName")->setText(QStringLiteral("gone"));
    find<QCheckBox>("m_renderNode")->setChecked(false);
    QCOMPARE(m_node->hostName(), QStringLiteral("gone"));
}

void tst_zoHPCTreeEditGUIW::deletedItemIsForgotten()
{
    zoHPCTreeEditGUIW second;
    {
        zoHPCTreeEditGUIW gone;
        gone.setItem(m_node);
    }
    second.setItem(m_node);
    m_editor->setItem(m_node);
    QSignalSpy changed(m_editor.get(), &zoHPCTreeEditGUIW::hostChanged);

    delete m_node;

    find<QLineEdit>("m_hostName")->setText(QStringLiteral("gone"));
    second.setEncrypted(true);
    QCOMPARE(changed.count(), 0);
    // Shows the next one as if nothing had been.
    zoHPCTreeItem* node = m_tree->createNode(m_tree->findNetworkByIndex(1), QStringLiteral("next"), -1);
    m_editor->setItem(node);
    find<QLineEdit>("m_hostName")->setText(QStringLiteral("after"));
    QCOMPARE(node->hostName(), QStringLiteral("after"));
}

void tst_zoHPCTreeEditGUIW::editorOutlivesTheTree()
{
    m_editor->setItem(m_node);
    QSignalSpy changed(m_editor.get(), &zoHPCTreeEditGUIW::hostChanged);

    m_tree.reset();

    find<QLineEdit>("m_hostName")->setText(QStringLiteral("nobody"));
    find<QCheckBox>("m_renderNode")->toggle();
    find<QCheckBox>("m_hostEnabled")->toggle();
    find<QComboBox>("m_sceneCompression")->setCurrentIndex(1);
    find<QSpinBox>("m_servicePort")->setValue(3);
    QCOMPARE(changed.size(), 0);
}

void tst_zoHPCTreeEditGUIW::rebuiltTreeIsShownFromItsMaster()
{
    connect(m_tree.get(), &zoHPCTreeGUIW::selectedItemChanged, m_editor.get(), &zoHPCTreeEditGUIW::setItem);
    m_tree->setSelectedItem(m_node);

    m_tree->setDefaultConfig();

    QCOMPARE(find<QStackedWidget>("m_stackedEditPanel")->currentIndex(), 0);
    QCOMPARE(find<QComboBox>("m_sceneCompression")->currentText(), QStringLiteral("High"));
    // The widgets of the node's page hold no dead node.
    find<QLineEdit>("m_hostName")->setText(QStringLiteral("x"));
    QCOMPARE(m_tree->getNodeNames(), QStringList{QStringLiteral("localhost")});
}

ZO_TEST_MAIN(tst_zoHPCTreeEditGUIW)
#include "tst_zoHPCTreeEditGUIW.moc"
