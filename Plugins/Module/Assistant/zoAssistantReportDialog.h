#pragma once

#include "zoHPCConfiguration.h"
#include "zoHPCReport.h"

#include <QDialog>
#include <QPointer>

#include <memory>

class QComboBox;
class QLabel;
class QLineEdit;
class QPrinter;
class QPushButton;
class zoAssistantNumberField;
class zoAssistantPageView;
class zoConfigurationService;

// The report of the configuration that is open, page by page, to be saved as PDF or printed.
class zoAssistantReportDialog final : public QDialog
{
    Q_OBJECT

public:
    // The configuration as it is now.
    explicit zoAssistantReportDialog(const zoConfigurationService& configuration, QWidget* parent = nullptr);
    ~zoAssistantReportDialog() override;

    const zoHPCReport& report() const { return *m_report; }           // for tests
    const zoHPCReport::Subject& subject() const { return m_subject; } // for tests

    // False, and the message tells why, when the file cannot be written or the report has too many pages.
    bool savePdf(const QString& fileName);
    // All pages of the report, or those from and to which the printer is set. False, with a message, when it fails.
    bool printOn(QPrinter& printer);

public slots:
    void save();
    void print();

private:
    void readConfiguration(const zoConfigurationService& configuration);
    void createParts();
    void layOut();
    void make();
    void showPage(int page);
    void tell(const QString& text);

    zoHPCConfiguration m_configuration; // outlives the report
    QString m_file;                     // that is open; empty for none
    zoHPCReport::Subject m_subject;
    std::vector<zoHPCReport::Problem> m_problems;
    std::unique_ptr<zoHPCReport> m_report;
    zoAssistantPageView* m_view;
    QComboBox* m_paper;
    QLineEdit* m_title;
    zoAssistantNumberField* m_pitch;
    QPushButton* m_back;
    QPushButton* m_forth;
    QLabel* m_page;
    QLabel* m_message;
    QPushButton* m_save;
    QPushButton* m_print;
};
