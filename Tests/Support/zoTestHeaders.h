#pragma once

// What most tests see of the toolkit and of the language, to be read once; see zo_compile_quickly(). Each test includes what it
// needs all the same. Nothing of QtTest, whose headers are others for tests with a network.

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>
