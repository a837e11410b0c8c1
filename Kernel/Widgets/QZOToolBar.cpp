#include "QZOToolBar.h"

QZOToolBar::QZOToolBar(QWidget* parent) : QToolBar(parent) {}

QZOToolBar::QZOToolBar(const QString& title, QWidget* parent) : QToolBar(title, parent) {}

QZOToolBar::~QZOToolBar() = default;
