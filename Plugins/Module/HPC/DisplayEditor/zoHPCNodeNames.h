#pragma once

#include <QCoreApplication>
#include <QSet>
#include <QStringListModel>

#include <functional>
#include <memory>

class zoHPCLayout;

// The nodes that a window can be on, by name: those that have a window already and gateways look and are told
// otherwise.
class zoHPCNodeNames final : public QStringListModel
{
    Q_OBJECT

public:
    explicit zoHPCNodeNames(QObject* parent = nullptr);
    ~zoHPCNodeNames() override;

    // Asked whenever the marks are shown; gives the configuration as it is, or null.
    using LayoutSource = std::function<std::shared_ptr<const zoHPCLayout>()>;
    void setLayoutSource(const LayoutSource& source) { m_source = source; }

    QVariant data(const QModelIndex& index, int role) const override;

private:
    QString mark(const QString& name) const;
    void readLayout() const;

    LayoutSource m_source;
    // Of the configuration that was asked for last.
    mutable std::weak_ptr<const zoHPCLayout> m_layout;
    mutable QSet<QString> m_used;
    mutable QSet<QString> m_gateways;
};
