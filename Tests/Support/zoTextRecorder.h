#pragma once

#include <QFontInfo>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QRectF>
#include <QString>

#include <vector>

// Paints nothing and remembers each text: what it says, where it is and how large its letters are.
class zoTextRecorder final : public QPaintDevice
{
public:
    struct Text
    {
        QString text;
        QRectF box; // units of the painter
        double points = 0.0;
    };

    explicit zoTextRecorder(const QSize& size) : m_size(size) {}

    const std::vector<Text>& texts() const { return m_engine.texts; }
    QPaintEngine* paintEngine() const override { return &m_engine; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        constexpr int Dpi = 96;
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmWidthMM:
            return m_size.width() * 254 / (Dpi * 10);
        case PdmHeightMM:
            return m_size.height() * 254 / (Dpi * 10);
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return Dpi;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        case PdmNumColors:
            return 0;
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    class Engine final : public QPaintEngine
    {
    public:
        Engine() : QPaintEngine(AllFeatures) {}
        bool begin(QPaintDevice*) override { return true; }
        bool end() override { return true; }
        void updateState(const QPaintEngineState&) override {}
        void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
        void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
        void drawPath(const QPainterPath&) override {}
        Type type() const override { return User; }
        void drawTextItem(const QPointF& place, const QTextItem& item) override
        {
            const QRectF box(place.x(), place.y() - item.ascent(), item.width(),
                             item.ascent() + item.descent());
            texts.push_back({item.text(), painter()->transform().mapRect(box),
                             QFontInfo(item.font()).pixelSize() * 72.0 / 96.0});
        }

        std::vector<Text> texts;
    };

    QSize m_size;
    mutable Engine m_engine;
};
