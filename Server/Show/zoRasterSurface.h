#pragma once

#include "zoShowSurface.h"

#include <QBackingStore>
#include <QImage>

#include <memory>

// Draws with the processor: on machines without hardware for GL this is the faster way, and the only one offscreen.
class zoRasterSurface final : public zoShowSurface
{
public:
    zoRasterSurface();
    ~zoRasterSurface() override;

    zoShowWindow& window() override { return *m_window; }
    QString description() const override;
    void draw(const zoWindowPicture& picture) override;
    void finish() override {}
    void swap() override;
    void repeat(const zoWindowPicture&) override { swap(); }
    QImage frame(const zoWindowPicture& picture) override;

private:
    std::unique_ptr<zoShowWindow> m_window;
    std::unique_ptr<QBackingStore> m_store; // goes before its window
    QImage m_frame;
};
