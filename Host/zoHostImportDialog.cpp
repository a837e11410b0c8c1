#include "zoHostImportDialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>

namespace
{
constexpr int s_iconSize = 32; // pixels

QLabel* wrapped(const QString& text, const char* name, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    return label;
}
} // namespace

zoHostImportDialog::zoHostImportDialog(const QString& fileName, const QString& target,
                                       const QStringList& remarks, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("ImportDialog"));
    setWindowTitle(tr("Import"));
    auto* icon = new QLabel(this);
    icon->setPixmap(style()
                        ->standardIcon(remarks.isEmpty() ? QStyle::SP_MessageBoxInformation
                                                         : QStyle::SP_MessageBoxWarning)
                        .pixmap(s_iconSize));
    const QString name = QFileInfo(fileName).fileName();
    auto* head = wrapped(remarks.isEmpty() ? tr("%1 was imported.").arg(name)
                                           : tr("%1 was imported. Look at this in the result:").arg(name),
                         "ImportHead", this);
    head->setToolTip(QDir::toNativeSeparators(fileName));
    auto* list = new QListWidget(this);
    list->setObjectName(QStringLiteral("ImportRemarks"));
    list->setAccessibleName(tr("Remarks"));
    list->setWordWrap(true);
    list->setAlternatingRowColors(true);
    list->setTextElideMode(Qt::ElideNone);
    list->addItems(remarks);
    list->setHidden(remarks.isEmpty());
    auto* where = wrapped(
        target.isEmpty()
            ? tr("It is in no file of the present format yet: Save asks for a name.")
            : tr("Save would write it over %1, which is still the open file. Save As writes another one.")
                  .arg(QDir::toNativeSeparators(target)),
        "ImportTarget", this);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* saveAs = buttons->addButton(tr("Save &As..."), QDialogButtonBox::ActionRole);
    saveAs->setObjectName(QStringLiteral("ImportSaveAs"));
    saveAs->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(saveAs, &QPushButton::clicked, this, [this] {
        accept();
        emit saveAsRequested();
    });

    auto* layout = new QGridLayout(this);
    layout->addWidget(icon, 0, 0, Qt::AlignTop);
    layout->addWidget(head, 0, 1);
    layout->addWidget(list, 1, 1);
    layout->addWidget(where, 2, 1);
    layout->addWidget(buttons, 3, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(1, 1);
    resize(remarks.isEmpty() ? QSize(460, 160) : QSize(620, 320));
}

zoHostImportDialog::~zoHostImportDialog() = default;
