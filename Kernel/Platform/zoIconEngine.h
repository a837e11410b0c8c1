#pragma once

#include "zoQt.h"

#include <QHash>
#include <QIconEngine>
#include <QPixmap>
#include <QSharedPointer>
#include <QString>

// Draws an icon from two SVG files, one for each state, in any size and sharp on any screen. Needs no plug-in
// of Qt. Selected, and in dark palettes, the artwork has a light rim where its strokes would not be seen.
class zoIconEngine final : public QIconEngine
{
public:
    // Resource or file paths; an empty second one shows the first in both states.
    zoIconEngine(const QString& offFile, const QString& onFile);
    ~zoIconEngine() override;

    QString key() const override;
    QIconEngine* clone() const override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) ZO_QT5_CONST override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;

private:
    using Cache = QHash<quint32, QPixmap>;

    QPixmap rendered(int edge, bool disabled, bool on) const;

    QString m_offFile;
    QString m_onFile;
    QSharedPointer<Cache> m_cache; // shared by all copies of an icon
};
