#include "zoHPCDisplaySize.h"

#include "ui_zoHPCDisplayForm.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace
{
// What window managers put around a window (pixels).
constexpr QSize s_frame(32, 48);
} // namespace

void zoHPCDisplaySize::begin(QDialog& dialog, const Ui_zoHPCDisplayGUII& form, int previewWidth)
{
    constexpr int TREE_WIDTH = 280;
    constexpr int PICTURE_WIDTH = 580; // most problems can be read to their end
    const int pictureWidth = std::max(PICTURE_WIDTH, previewWidth);
    const int panelWidth = form.m_panelArea->minimumWidth();
    form.m_splitter->setSizes({TREE_WIDTH, panelWidth, pictureWidth});
    // Within the screen, with room for the frame around the window.
    const QSize room = QGuiApplication::primaryScreen()->availableGeometry().size() - s_frame;
    dialog.resize(std::min(TREE_WIDTH + panelWidth + pictureWidth, room.width()),
                  std::min(dialog.height(), room.height()));
}

void zoHPCDisplaySize::fitScreen(QDialog& dialog, const Ui_zoHPCDisplayGUII& form)
{
    const QSize room = dialog.screen()->availableGeometry().size() - s_frame;
    const int tooWide = dialog.minimumSizeHint().width() - room.width();
    if (tooWide > 0) {
        // Better panels to scroll than panes one over the other.
        form.m_panelArea->setMinimumWidth(std::max(form.m_panelArea->minimumWidth() - tooWide, 0));
        form.m_panelArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        form.m_splitter->updateGeometry();
        dialog.layout()->activate();
    }
    if ((dialog.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) == 0)
        dialog.resize(dialog.size().boundedTo(room));
}
