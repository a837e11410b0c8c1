#pragma once

#include "zoHPCSurvey.h"
#include "zoHPCSurveySolver.h"

#include <QDialog>
#include <QPointer>
#include <QTimer>

class QDialogButtonBox;
class QLabel;
class QMenu;
class zoAssistantRoomView;
class zoAssistantSurveyTable;
class zoConfigurationService;

// Takes what was measured in a room, line by line or from a file, shows what remains of each measurement and the room
// that comes of it, and puts its planes into the configuration that is open.
class zoAssistantSurveyDialog final : public QDialog
{
    Q_OBJECT

public:
    // The service outlives the dialog, or goes; null takes nothing. `text`, if given, outlives the dialog: what was there
    // last time, and becomes what is there at the end.
    explicit zoAssistantSurveyDialog(zoConfigurationService* configuration, QString* text = nullptr,
                                     QWidget* parent = nullptr);
    ~zoAssistantSurveyDialog() override;

    QSize sizeHint() const override;

    // Of the lines as they are, for tests.
    const zoHPCSurveySolution& solution() const { return m_solution; }

public slots:
    // False, and tells why, when it cannot be read. Point lists are looked for beside the file from then on.
    bool loadFile(const QString& fileName);
    bool saveFile(const QString& fileName);
    // Closes when the host has taken the planes.
    void accept() override;
    void reject() override;

private:
    void createParts();
    void createMenu(QMenu* menu);
    void layOut();
    void load();
    void save();
    void review();
    void readText();
    bool findList(const QString& name, QString& text, QString& reason) const;
    static QString told(const zoHPCSurvey::Remark& remark);
    void showResiduals();
    void showRoom();
    std::size_t rowOf(const zoHPCSurvey::Measurement& measurement) const;
    void tell();
    QString verdict() const;
    void tellFlaw(const QString& text);

    QPointer<zoConfigurationService> m_configuration;
    QString* m_text; // not owned; may be null
    QString m_folder;
    zoHPCSurvey m_survey;
    zoHPCSurveySolution m_solution;
    QString m_mistake; // the first one of the lines
    int m_mistakeRow = -1;
    QString m_result; // the configuration that OK makes; empty for none
    QTimer m_timer;   // until the lines are read
    zoAssistantSurveyTable* m_table;
    zoAssistantRoomView* m_room;
    QLabel* m_verdict;
    QLabel* m_sign;
    QLabel* m_message;
    QDialogButtonBox* m_buttons;
};
