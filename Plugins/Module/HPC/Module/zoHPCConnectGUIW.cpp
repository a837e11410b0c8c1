#include "zoHPCConnectGUIW.h"

#include "ui_zoHPCConnectGUIW.h"

#include <QLayout>
#include <QPainter>
#include <QShowEvent>
#include <QWindow>

#include <zoClusterService.h>
#include <zoKernelServiceFactory.h>

namespace
{
constexpr int CornerRadius = 6; // pixels
} // namespace

zoHPCConnectGUIW::zoHPCConnectGUIW(QWidget* parent, const QString& name)
    : QDialog(parent, Qt::Tool | Qt::FramelessWindowHint), m_ui(std::make_unique<Ui_zoHPCConnectGUIW>())
{
    m_ui->setupUi(this);
    setObjectName(name);
    setModal(true);
    setAttribute(Qt::WA_TranslucentBackground);

    connect(m_ui->m_abortButton, SIGNAL(clicked()), this, SLOT(clickedAbort()));
    if (zoClusterService* service = zoKernelServiceFactory::getService<zoClusterService>()) {
        connect(service, SIGNAL(progressChanged(QString,int)), this, SLOT(setProgress(QString,int)));
        connect(service, SIGNAL(progressFinished()), this, SLOT(setFinished()));
    }
}

zoHPCConnectGUIW::~zoHPCConnectGUIW() = default;

void zoHPCConnectGUIW::setProgress(const QString& text, int value)
{
    m_ui->m_label->setText(text);
    if (value < 0 && m_ui->m_progressBar->maximum() != 0)
        m_ui->m_progressBar->setMaximum(0);
    // Compared with 10 but set to 100: a bar with ten steps is left as whoever made it wanted it.
    if (value >= 0 && m_ui->m_progressBar->maximum() != 10)
        m_ui->m_progressBar->setMaximum(100);
    m_ui->m_progressBar->setValue(value);
    growToText();
    show();
}

// The names of the nodes take more lines than the form's text. A window does not follow what wraps inside it.
void zoHPCConnectGUIW::growToText()
{
    m_ui->m_label->ensurePolished(); // its padding counts
    const int needed = layout()->totalHeightForWidth(width());
    if (needed > height())
        resize(width(), needed);
}

// Who had the keys gives them back: a window manager that is busy with new windows (a rehearsal opens its own at this
// moment) leaves them with nobody. Without them here a person has gone elsewhere, and is not called back.
void zoHPCConnectGUIW::setFinished()
{
    const bool hadKeys = isActiveWindow();
    hide();
    if (hadKeys && parentWidget() != nullptr && parentWidget()->window()->isVisible())
        giveKeysBack();
}

void zoHPCConnectGUIW::giveKeysBack()
{
    QWindow* own = windowHandle();
    QWindow* host = own->transientParent();
    // While the window with the keys is seen as a part of the other, the toolkit goes past the window manager, which
    // then takes them away again.
    own->setTransientParent(nullptr);
    parentWidget()->window()->activateWindow();
    own->setTransientParent(host);
}

void zoHPCConnectGUIW::clickedAbort()
{
    m_ui->m_abortButton->setEnabled(false);
    abortConnecting();
}

// Esc, or whatever closes windows: an attempt that nobody sees any more could not be aborted. The overlay stays
// until the service tells that it is over.
void zoHPCConnectGUIW::reject()
{
    if (m_ui->m_abortButton->isEnabled())
        clickedAbort();
}

void zoHPCConnectGUIW::setAbortEnabled(bool enabled)
{
    Q_UNUSED(enabled)
    abortConnecting();
}

void zoHPCConnectGUIW::abortConnecting()
{
    if (zoClusterService* service = zoKernelServiceFactory::getService<zoClusterService>())
        service->abort();
}

void zoHPCConnectGUIW::showEvent(QShowEvent* event)
{
    // A new attempt can be aborted again.
    if (!event->spontaneous())
        m_ui->m_abortButton->setEnabled(true);
    QDialog::showEvent(event);
}

void zoHPCConnectGUIW::paintEvent(QPaintEvent* event)
{
    QDialog::paintEvent(event);

    QPainter painter(this);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(QColor(127, 127, 127, 255), 2.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter.setBrush(QBrush(QColor(0, 0, 0, 75), Qt::SolidPattern));
    painter.drawRoundedRect(QRectF(0, 0, width(), height()), CornerRadius, CornerRadius, Qt::AbsoluteSize);
    const QRegion rounded = createRoundedRect(rect(), CornerRadius);
    // Setting the same mask again would ask for the next paint event from inside this one, without end.
    if (mask() != rounded)
        setMask(rounded);
    painter.setClipRegion(rounded, Qt::ReplaceClip);
    painter.restore();
}

QRegion zoHPCConnectGUIW::createRoundedRect(const QRect& rect, int radius)
{
    const int diameter = 2 * radius;
    const int farLeft = rect.right() - diameter + 1;
    const int farTop = rect.bottom() - diameter + 1;
    QRegion region(
        QRect(QPoint(rect.left() + radius, rect.top()), QPoint(rect.right() - radius, rect.bottom())));
    region += QRect(QPoint(rect.left(), rect.top() + radius), QPoint(rect.right(), rect.bottom() - radius));
    for (const QPoint& corner :
         {rect.topLeft(), QPoint(farLeft, rect.top()), QPoint(rect.left(), farTop), QPoint(farLeft, farTop)})
        region += QRegion(QRect(corner, QSize(diameter, diameter)), QRegion::Ellipse);
    return region;
}
