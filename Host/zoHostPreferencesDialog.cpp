#include "zoHostPreferencesDialog.h"

#include "zoHostPreferencesService.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

zoHostPreferencesDialog::zoHostPreferencesDialog(zoHostPreferencesService* service, QWidget* parent)
    : QDialog(parent), m_service(service), m_titles(new QListWidget(this)), m_stack(new QStackedWidget(this))
{
    setWindowTitle(tr("Preferences"));
    setObjectName(QStringLiteral("PreferencesDialog"));
    resize(680, 380);
    m_titles->setAccessibleName(tr("Pages"));
    m_titles->setMaximumWidth(170);

    for (const zoHostPreferencesService::Page& page : m_service->pages()) {
        if (!page.widget)
            continue;
        auto* item = new QListWidgetItem(page.title, m_titles);
        item->setSizeHint(QSize(0, fontMetrics().height() + 10));
        m_stack->addWidget(page.widget);
        m_shown.emplace_back(page.widget);
        // A page that goes takes its row along, so that rows and pages keep matching.
        connect(page.widget.data(), &QObject::destroyed, item->listWidget(),
                [titles = m_titles, item] { delete titles->takeItem(titles->row(item)); });
        if (page.show)
            page.show();
    }
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
