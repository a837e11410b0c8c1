#include "zoHPCDisplaySize.h"

#include "ui_zoHPCDisplayForm.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

void zoHPCDisplaySize::begin(QDialog& dialog, const Ui_zoHPCDisplayGUII& form, int previewWidth)
{
    constexpr int TREE_WIDTH = 280;
    constexpr int PICTURE_WIDTH = 580; // most problems can be read to their end
    const int pictureWidth = std::max(PICTURE_WIDTH, previewWidth);
    const int panelWidth = form.m_panelArea->minimumWidth();
    form.m_splitter->setSizes({TREE_WIDTH, panelWidth, pictureWidth});
    // Within the screen, with room for the frame around the window.
    constexpr int FRAME = 48;
    const QSize screen = QGuiApplication::primaryScreen()->availableGeometry().size();
    dialog.resize(std::min(TREE_WIDTH + panelWidth + pictureWidth, screen.width()),
                  std::min(dialog.height(), screen.height() - FRAME));
}

void zoHPCDisplaySize::fitScreen(QDialog& dialog, const Ui_zoHPCDisplayGUII& form)
{
    constexpr int FRAME = 32; // around the window
    const int room = dialog.screen()->availableGeometry().width() - FRAME;
    const int tooWide = dialog.minimumSizeHint().width() - room;
    if (tooWide <= 0)
        return;
    // Better panels to scroll than panes one over the other.
    form.m_panelArea->setMinimumWidth(std::max(form.m_panelArea->minimumWidth() - tooWide, 0));
    form.m_panelArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    form.m_splitter->updateGeometry();
    dialog.layout()->activate();
    dialog.resize(std::min(dialog.width(), room), dialog.height());
}
