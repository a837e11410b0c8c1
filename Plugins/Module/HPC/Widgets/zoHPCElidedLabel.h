#pragma once

#include <QFrame>
#include <QString>

// A line of text that gives up its middle when it has not enough room.
class zoHPCElidedLabel final : public QFrame
{
    Q_OBJECT

public:
    explicit zoHPCElidedLabel(QWidget* parent = nullptr);

    const QString& text() const { return m_text; }
    void setText(const QString& text);
    // What is painted at the present width.
    QString shownText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    int widthOf(const QString& text) const;

    QString m_text;
};
