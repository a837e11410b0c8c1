#pragma once

#include <QSizeF>
#include <QWidget>

#include <functional>

// A page of paper, as large as there is room for.
class zoAssistantPageView final : public QWidget
{
    Q_OBJECT

public:
    using Paint = std::function<void(QPainter& painter)>;

    explicit zoAssistantPageView(QWidget* parent = nullptr);
    ~zoAssistantPageView() override;

    // The paper's size in the units that the painter counts in. What is drawn with stays valid until the next call.
    void showPage(const QSizeF& paper, const Paint& paint);

    QSize sizeHint() const override;

signals:
    // By the wheel or a key: -1 for the page before, 1 for the next one.
    void turned(int pages);

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QSizeF m_paper;
    Paint m_paint;
};
