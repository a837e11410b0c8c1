#pragma once

#include <QPaintDevice>
#include <QPaintEngine>
#include <QRectF>
#include <QSize>
#include <QString>

#include <vector>

// Notes the texts that are painted on it, and where.
class zoTextNotes final : public QPaintDevice
{
public:
    explicit zoTextNotes(const QSize& size) : m_size(size) {}

    struct Text
    {
        QString text;
        QRectF box;
    };

    QPaintEngine* paintEngine() const override { return &m_engine; }
    const std::vector<Text>& texts() const { return m_engine.texts; }
    QRectF boxOf(const QString& text) const
    {
        for (const Text& one : texts()) {
            if (one.text == text)
                return one.box;
        }
        return {};
    }

protected:
    int metric(PaintDeviceMetric which) const override
    {
        switch (which) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        default:
            return QPaintDevice::metric(which);
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
        void drawPath(const QPainterPath&) override {}
        void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
        void drawTextItem(const QPointF& at, const QTextItem& item) override
        {
            texts.push_back({item.text(), QRectF(at.x(), at.y() - item.ascent(), item.width(),
                                                 item.ascent() + item.descent())});
        }
        Type type() const override { return User; }

        std::vector<Text> texts;
    };

    QSize m_size;
    mutable Engine m_engine;
};
