#include "zoHPCConfigEditGUIW.h"

#include "zoText.h"

#include "ui_zoHPCConfigEditGUIW.h"

#include <zoIconManager.h>
#include <zoPlatform.h>

#include <QFileDialog>
#include <QFontDatabase>

zoHPCConfigEditGUIW::zoHPCConfigEditGUIW(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui_zoHPCConfigEditGUIW>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_ui->m_textEdit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));

    const int iconSize = zoPlatform::getSmallIconSize();
    m_ui->m_browseButton->setIcon(zoIconManager::getIcon(zoText("FileOpen"), QString()));
    m_ui->m_browseButton->setIconSize(QSize(iconSize, iconSize));
    m_ui->m_browseButton->setMinimumSize(iconSize + 2, iconSize + 2);
    m_ui->m_browseButton->setMaximumSize(iconSize + 2, iconSize + 2);

    connect(m_ui->m_browseButton, &QAbstractButton::clicked, this, &zoHPCConfigEditGUIW::browseServersFile);
}

zoHPCConfigEditGUIW::~zoHPCConfigEditGUIW() = default;

QString zoHPCConfigEditGUIW::text() const
{
    return m_ui->m_textEdit->toPlainText();
}

QString zoHPCConfigEditGUIW::getServersFile() const
{
    return m_ui->m_serversFile->text();
}

void zoHPCConfigEditGUIW::setText(const QString& text)
{
    // Without history: the first undo must not empty the editor.
    m_ui->m_textEdit->setUndoRedoEnabled(false);
    m_ui->m_textEdit->clear();
    m_ui->m_textEdit->insertPlainText(text);
    m_ui->m_textEdit->setUndoRedoEnabled(true);
    m_ui->m_textEdit->moveCursor(QTextCursor::End);
    m_ui->m_textEdit->ensureCursorVisible();
}

void zoHPCConfigEditGUIW::setServersFile(const QString& fileName)
{
    m_ui->m_serversFile->setText(fileName);
}

void zoHPCConfigEditGUIW::setServersFileEditable(bool editable)
{
    m_ui->m_serversFileRow->setVisible(editable);
}

void zoHPCConfigEditGUIW::browseServersFile()
{
    const QString directory = QString::fromStdString(zoPlatform::getDataDir()) + zoText("/cluster");
    const QString chosen =
        QFileDialog::getOpenFileName(this, tr("List of compute nodes"), directory, zoText("*.*"));
    if (!chosen.isEmpty())
        m_ui->m_serversFile->setText(chosen);
}
