#include "zoHPCStatusPane.h"

#include "zoHPCElidedLabel.h"
#include "zoHPCProblemModel.h"
#include "zoText.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

namespace
{
// What a tool tip tells of a long list.
constexpr std::size_t MostProblemsTold = 8;
// Of the file's name, in average characters: alone, and beside a message.
constexpr int WidestName = 40;
constexpr int ShortName = 8;
} // namespace

zoHPCStatusPane::zoHPCStatusPane(QWidget* parent) : QWidget(parent)
{
    m_file = new zoHPCElidedLabel;
    m_file->setObjectName(zoText("m_fileStatus"));
    m_changed = new QLabel;
    m_changed->setObjectName(zoText("m_changedStatus"));
    m_nodes = new QLabel;
    m_nodes->setObjectName(zoText("m_nodesStatus"));
    m_displays = new QLabel;
    m_displays->setObjectName(zoText("m_displaysStatus"));
    m_problems = new QToolButton;
    m_problems->setObjectName(zoText("m_problemsStatus"));
    m_problems->setAutoRaise(true);
    m_problems->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_problems->setFocusPolicy(Qt::TabFocus);
    m_problems->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    const int iconSize = style()->pixelMetric(QStyle::PM_SmallIconSize) * 3 / 4;
    m_problems->setIconSize(QSize(iconSize, iconSize));
    connect(m_problems, &QToolButton::clicked, this, &zoHPCStatusPane::problemsClicked);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(fontMetrics().averageCharWidth());
    for (QWidget* part :
         {static_cast<QWidget*>(m_file), static_cast<QWidget*>(m_changed), static_cast<QWidget*>(m_nodes),
          static_cast<QWidget*>(m_displays), static_cast<QWidget*>(m_problems)})
        layout->addWidget(part);

    setFile(QString());
    setDiffers(false);
    setCounts(0, 0);
    setProblems({});
    // The bar keeps its height whatever gives way to a message.
    setMinimumHeight(sizeHint().height());
}

void zoHPCStatusPane::setFile(const QString& path)
{
    m_file->setText(path.isEmpty() ? tr("Not saved") : QFileInfo(path).fileName());
    m_file->setToolTip(path.isEmpty() ? tr("This configuration is in no file yet")
                                      : QDir::toNativeSeparators(path).toHtmlEscaped());
}

void zoHPCStatusPane::setDiffers(bool differs)
{
    m_changed->setText(differs ? tr("changed") : QString());
    m_changed->setToolTip(differs ? tr("The configuration holds changes that were not saved") : QString());
    m_differs = differs;
    arrange();
}

void zoHPCStatusPane::setCounts(int nodes, int displays)
{
    m_nodes->setText(nodes == 1 ? tr("1 node") : tr("%1 nodes").arg(QString::number(nodes)));
    m_nodes->setToolTip(tr("Compute nodes of the cluster"));
    m_displays->setText(displays == 1 ? tr("1 display") : tr("%1 displays").arg(QString::number(displays)));
    m_displays->setToolTip(tr("Displays of the display setup"));
}

void zoHPCStatusPane::setProblems(const std::vector<zoHPCProblem>& problems)
{
    const auto count = problems.size();
    m_problems->setText(count == 0   ? tr("No problems")
                        : count == 1 ? tr("1 problem")
                                     : tr("%1 problems").arg(QString::number(count)));
    // That of the worst one: the severities begin with it.
    const auto worst =
        std::min_element(problems.begin(), problems.end(), [](const zoHPCProblem& a, const zoHPCProblem& b) {
            return a.severity() < b.severity();
        });
    m_problems->setIcon(count == 0 ? QIcon()
                                   : style()->standardIcon(zoHPCProblemModel::iconOf(worst->severity())));
    if (count == 0) {
        m_problems->setToolTip(
            tr("Every window would show its part of the scene, as far as can be told from here"));
        return;
    }
    QStringList lines;
    for (std::size_t i = 0; i < qMin(count, MostProblemsTold); ++i)
        lines << problems[i].message.toHtmlEscaped();
    if (count > MostProblemsTold)
        lines << tr("and %1 more").arg(QString::number(count - MostProblemsTold));
    lines << tr("Click to see them in the display setup, where they can be fixed.");
    m_problems->setToolTip(zoText("<qt>") + lines.join(zoText("<br/>")) + zoText("</qt>"));
}

void zoHPCStatusPane::giveRoom(int width)
{
    m_room = width;
    arrange();
}

void zoHPCStatusPane::arrange()
{
    const auto setNameWidth = [this](int characters) {
        m_file->setMaximumWidth(fontMetrics().averageCharWidth() * characters);
    };
    setNameWidth(WidestName);
    const QList<QWidget*> parts = findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* part : parts)
        part->setVisible(part != m_changed || m_differs);
    const auto isRoom = [this] {
        return m_room == 0 || parentWidget() == nullptr ||
               parentWidget()->width() - sizeHint().width() >= m_room;
    };
    if (isRoom())
        return;
    setNameWidth(ShortName);
    // What matters most goes last.
    for (QWidget* part :
         {static_cast<QWidget*>(m_displays), static_cast<QWidget*>(m_nodes), static_cast<QWidget*>(m_file),
          static_cast<QWidget*>(m_problems), static_cast<QWidget*>(m_changed)}) {
        if (isRoom())
            return;
        part->hide();
    }
}
