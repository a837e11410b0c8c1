#include "zoHostPreferencesDialog.h"

#include "zoHostPreferencesService.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

zoHostPreferencesDialog::zoHostPreferencesDialog(zoHostPreferencesService* service, QWidget* parent)
    : QDialog(parent), m_service(service), m_titles(new QListWidget(this)), m_stack(new QStackedWidget(this))
{
    setWindowTitle(tr("Preferences"));
    setObjectName(QStringLiteral("PreferencesDialog"));
    m_titles->setAccessibleName(tr("Pages"));

    for (const zoHostPreferencesService::Page& page : m_service->pages()) {
        if (!page.widget)
            continue;
        auto* item = new QListWidgetItem(page.title, m_titles);
        item->setSizeHint(
            QSize(fontMetrics().horizontalAdvance(page.title) + 16, fontMetrics().height() + 10));
        m_stack->addWidget(page.widget);
        m_shown.emplace_back(page.widget);
        // A page that goes takes its row along, so that rows and pages keep matching.
        connect(page.widget.data(), &QObject::destroyed, item->listWidget(),
                [titles = m_titles, item] { delete titles->takeItem(titles->row(item)); });
        if (page.show)
            page.show();
    }
    m_titles->setFixedWidth(std::max(m_titles->sizeHintForColumn(0) + 2 * m_titles->frameWidth(), 120));
    if (m_titles->count() == 0) {
        auto* nothing = new QLabel(tr("No module offers preferences."), m_stack);
        nothing->setAlignment(Qt::AlignCenter);
        m_stack->addWidget(nothing);
    }

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel |
                                             QDialogButtonBox::Apply | QDialogButtonBox::RestoreDefaults,
                                         this);
    auto* body = new QHBoxLayout;
    body->addWidget(m_titles);
    body->addWidget(m_stack, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    layout->addWidget(buttons);

    connect(m_titles, &QListWidget::currentRowChanged, m_stack, &QStackedWidget::setCurrentIndex);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            &zoHostPreferencesDialog::apply);
    connect(buttons->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            &zoHostPreferencesDialog::restoreDefaults);
    m_titles->setCurrentRow(0);
    // As large as the largest page wants to be: what is cut off would not be read.
    resize(sizeHint().expandedTo({680, 380}));
}

zoHostPreferencesDialog::~zoHostPreferencesDialog()
{
    for (const QPointer<QWidget>& page : m_shown) {
        if (!page)
            continue;
        disconnect(page, nullptr, m_titles, nullptr);
        // The dialog must not delete what belongs to a module.
        m_stack->removeWidget(page);
        page->hide();
        page->setParent(nullptr);
    }
}

void zoHostPreferencesDialog::accept()
{
    apply();
    QDialog::accept();
}

void zoHostPreferencesDialog::apply()
{
    for (const zoHostPreferencesService::Page& page : m_service->pages()) {
        if (page.widget && page.saveChanges)
            page.saveChanges();
    }
}

void zoHostPreferencesDialog::restoreDefaults()
{
    // Of the page that is seen only: nobody expects the others to change.
    for (const zoHostPreferencesService::Page& page : m_service->pages()) {
        if (!page.widget || page.widget != m_stack->currentWidget())
            continue;
        if (page.setDefaults)
            page.setDefaults();
        if (page.show)
            page.show();
        break;
    }
}
