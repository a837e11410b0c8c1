#pragma once

#include <QObject>

#include <memory>

class zoHostDocument;

// Writes to the log which configurations a person loads and saves.
class zoHostJournal final : public QObject
{
    Q_OBJECT

public:
    explicit zoHostJournal(const zoHostDocument* document, QObject* parent = nullptr); // outlives it
    ~zoHostJournal() override;

private:
    std::shared_ptr<bool> m_isUnderstood; // of what was read last
};
