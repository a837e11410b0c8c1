#include "zoTestCase.h"

#include <zoHostCameraPanel.h>
#include <zoHostCameraService.h>
#include <zoHostNodeService.h>

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QSettings>
#include <QTemporaryDir>
#include <QToolButton>

#include <memory>

// The list of cameras with its buttons.
class tst_zoHostCameraPanel final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();

    void listShowsTheCameras();
    void addMakesTheNewCameraCurrent();
    void renameEditsTheCurrentCamera();
    void refusedNameShowsAsBefore();
    void removeTakesTheCurrentCamera();
    void buttonsFollowTheCurrentCamera();
    void changesFromOutsideAreShown();

private:
    QToolButton* button(const QString& text) const;
    QStringList shown() const;

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<zoHostNodeService> m_nodes;
    std::unique_ptr<zoHostCameraService> m_cameras;
    std::unique_ptr<zoHostCameraPanel> m_panel;
    QListWidget* m_list = nullptr;
};

void tst_zoHostCameraPanel::init()
{
    m_panel.reset();
    m_cameras.reset();
    m_directory = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_directory->filePath("settings.ini"), QSettings::IniFormat);
    m_nodes = std::make_unique<zoHostNodeService>();
    m_cameras = std::make_unique<zoHostCameraService>(m_settings.get(), m_nodes.get());
    m_panel = std::make_unique<zoHostCameraPanel>(m_cameras.get(), m_nodes.get());
    m_list = m_panel->findChild<QListWidget*>("CameraList");
    QVERIFY(m_list != nullptr);
    m_panel->show();
}

QToolButton* tst_zoHostCameraPanel::button(const QString& text) const
{
    const QList<QToolButton*> buttons = m_panel->findChildren<QToolButton*>();
    for (QToolButton* candidate : buttons) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

QStringList tst_zoHostCameraPanel::shown() const
{
    QStringList names;
    for (int row = 0; row < m_list->count(); ++row)
        names << m_list->item(row)->text();
    return names;
}

void tst_zoHostCameraPanel::listShowsTheCameras()
{
    QCOMPARE(shown(), QStringList("Camera 1"));
}

void tst_zoHostCameraPanel::addMakesTheNewCameraCurrent()
{
    QTest::mouseClick(button("Add"), Qt::LeftButton);

    QCOMPARE(shown(), QStringList({"Camera 1", "Camera 2"}));
    QCOMPARE(m_list->currentRow(), 1);
}

void tst_zoHostCameraPanel::renameEditsTheCurrentCamera()
{
    m_list->setCurrentRow(0);

    QTest::mouseClick(button("Rename"), Qt::LeftButton);
    auto* editor = m_list->findChild<QLineEdit*>();
    QVERIFY(editor != nullptr);
    editor->setText("Front %1");
    QTest::keyClick(editor, Qt::Key_Return);

    QTRY_COMPARE(m_cameras->cameraNames(), QStringList("Front %1"));
    QCOMPARE(shown(), QStringList("Front %1"));
}

void tst_zoHostCameraPanel::refusedNameShowsAsBefore()
{
    m_cameras->addCamera();

    m_list->item(0)->setText("Camera 2");
    QCOMPARE(shown(), QStringList({"Camera 1", "Camera 2"}));
    m_list->item(1)->setText(" ");
    QCOMPARE(shown(), QStringList({"Camera 1", "Camera 2"}));
}

void tst_zoHostCameraPanel::removeTakesTheCurrentCamera()
{
    m_cameras->addCamera();
    m_list->setCurrentRow(0);

    QTest::mouseClick(button("Remove"), Qt::LeftButton);

    QCOMPARE(m_cameras->cameraNames(), QStringList("Camera 2"));
    QCOMPARE(shown(), QStringList("Camera 2"));
}

void tst_zoHostCameraPanel::buttonsFollowTheCurrentCamera()
{
    m_list->setCurrentRow(-1);
    QVERIFY(!button("Rename")->isEnabled());
    QVERIFY(!button("Remove")->isEnabled());

    m_list->setCurrentRow(0);
    QVERIFY(button("Rename")->isEnabled());
    QVERIFY(button("Remove")->isEnabled());

    QTest::mouseClick(button("Remove"), Qt::LeftButton);
    QVERIFY(!button("Remove")->isEnabled());
}

void tst_zoHostCameraPanel::changesFromOutsideAreShown()
{
    m_cameras->addCamera();
    QVERIFY(m_cameras->renameCamera(0, "Front"));

    QCOMPARE(shown(), QStringList({"Front", "Camera 2"}));
}

ZO_TEST_MAIN(tst_zoHostCameraPanel)
#include "tst_zoHostCameraPanel.moc"
