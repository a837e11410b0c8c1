#pragma once

#include <QCommandLinkButton>

// A command link that shows when it has the focus: styles leave that out while it is flat.
class zoHostLinkButton final : public QCommandLinkButton
{
    Q_OBJECT

public:
    zoHostLinkButton(const QString& text, const QString& description, QWidget* parent = nullptr);
    ~zoHostLinkButton() override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
