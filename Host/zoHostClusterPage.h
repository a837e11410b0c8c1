#pragma once

#include <QWidget>

class QSpinBox;
class zoLocalClusterService;
class zoPreferencesService;

// The preferences page of the embedded cluster service: the memory that each node of a session needs.
class zoHostClusterPage final : public QWidget
{
    Q_OBJECT

public:
    // Registers the page and hands the stored value to the service. Neither is owned; both outlive the page.
    zoHostClusterPage(zoPreferencesService* preferences, zoLocalClusterService* cluster);
    ~zoHostClusterPage() override;

private:
    int storedMebibytes() const;
    void storeMebibytes(int mebibytes);

    zoPreferencesService* m_preferences;
    zoLocalClusterService* m_cluster;
    QSpinBox* m_memoryPerNode;
};
