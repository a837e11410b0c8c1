#include "zoAssistantSurveyDialog.h"

#include "zoAssistantRoomView.h"
#include "zoAssistantSurveyTable.h"
#include "zoHPCConfiguration.h"
#include "zoHPCSurveyPlanes.h"
#include "zoHPCSurveyReader.h"
#include "zoText.h"

#include <zoConfigurationService.h>
#include <zoFileReader.h>
#include <zoFileText.h>
#include <zoFileWriter.h>

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QStyle>

#include <cmath>

namespace
{
using Table = zoAssistantSurveyTable;

// What most rooms have, to be overwritten.
const char* const s_firstLines = "wall Front size 3600 x 2000\nupright Front\nfloor Front.bottom 800\n"
                                 "viewer distance 2500 height 1650\n";

struct Template
{
    const char* title;
    const char* line;
};

constexpr Template s_templates[] = {
    {QT_TRANSLATE_NOOP("zoAssistantSurveyDialog", "&Wall or tile with its size"),
     "wall Left size 2000 x 2000"},
    {QT_TRANSLATE_NOOP("zoAssistantSurveyDialog", "Wall of &several tiles"),
     "wall Front size 3600 x 2000 tiles 3x2 gap 12 x 12"},
    {QT_TRANSLATE_NOOP("zoAssistantSurveyDialog", "&Distance between two corners"),
     "distance Front.ll Left.lr 20"},
    {QT_TRANSLATE_NOOP("zoAssistantSurveyDialog", "Height above the &floor"), "floor Front.bottom 800"},
    {QT_TRANSLATE_NOOP("zoAssistantSurveyDialog", "&Angle between two walls"), "angle Front Left 90"},
    {QT_TRANSLATE_NOOP("zoAssistantSurveyDialog", "&Edges that touch"), "join Front.left Left.right"},
    {QT_TRANSLATE_NOOP("zoAssistantSurveyDialog", "&Plumb walls"), "upright Front Left"},
    {QT_TRANSLATE_NOOP("zoAssistantSurveyDialog", "A wall that &lies flat"), "flat Floor"},
    {QT_TRANSLATE_NOOP("zoAssistantSurveyDialog", "Where the &viewer stands"),
     "viewer distance 2500 height 1650"},
    {QT_TRANSLATE_NOOP("zoAssistantSurveyDialog", "P&oint list of a total station"),
     "points list.csv unit m"},
    {QT_TRANSLATE_NOOP("zoAssistantSurveyDialog", "Which &corner a point of it is"), "mark 101 Front.ll"},
};

QString sentence(const QString& text)
{
    return text.endsWith(QLatin1Char('?')) ? text : text + QLatin1Char('.');
}

QString number(double value, int decimals)
{
    const double factor = std::pow(10.0, decimals);
    QLocale locale;
    locale.setNumberOptions(locale.numberOptions() | QLocale::OmitGroupSeparator);
    return locale.toString(std::round(value * factor) / factor + 0.0, 'f', decimals);
}
} // namespace

zoAssistantSurveyDialog::zoAssistantSurveyDialog(zoConfigurationService* configuration, QString* text,
                                                 QWidget* parent)
    : QDialog(parent)
    , m_configuration(configuration)
    , m_text(text)
    , m_folder(QDir::homePath())
    , m_table(new Table)
    , m_room(new zoAssistantRoomView)
    , m_verdict(new QLabel)
    , m_sign(new QLabel)
    , m_message(new QLabel)
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setObjectName(zoText("zoAssistantSurveyDialog"));
    setProperty("manualPage", zoText("measured-room"));
    setWindowTitle(tr("Measured room"));
    if (m_configuration && !m_configuration->fileName().isEmpty())
        m_folder = QFileInfo(m_configuration->fileName()).absolutePath();
    createParts();
    layOut();
    connect(m_table, &Table::edited, &m_timer, QOverload<>::of(&QTimer::start));
    connect(m_buttons, &QDialogButtonBox::accepted, this, &zoAssistantSurveyDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &zoAssistantSurveyDialog::reject);
    m_timer.setSingleShot(true);
    constexpr int AfterTyping = 100; // ms
    m_timer.setInterval(AfterTyping);
    connect(&m_timer, &QTimer::timeout, this, &zoAssistantSurveyDialog::review);
    m_table->setText(m_text && !m_text->isEmpty() ? *m_text : QLatin1String(s_firstLines));
    review();
    resize(sizeHint());
    m_table->setFocus();
}

zoAssistantSurveyDialog::~zoAssistantSurveyDialog() = default;

QSize zoAssistantSurveyDialog::sizeHint() const
{
    return QDialog::sizeHint().expandedTo({1080, 640});
}

void zoAssistantSurveyDialog::createParts()
{
    m_table->setObjectName(zoText("m_table"));
    m_room->setObjectName(zoText("m_room"));
    m_verdict->setObjectName(zoText("m_verdict"));
    m_verdict->setWordWrap(true);
    m_sign->setObjectName(zoText("m_sign"));
    m_message->setObjectName(zoText("m_message"));
    m_message->setWordWrap(true);
    m_message->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_buttons->setObjectName(zoText("m_buttonBox"));
}

void zoAssistantSurveyDialog::createMenu(QMenu* menu)
{
    for (const Template& entry : s_templates) {
        const QString line = QLatin1String(entry.line);
        menu->addAction(tr(entry.title), this, [this, line] { m_table->addLine(line); });
    }
}

void zoAssistantSurveyDialog::layOut()
{
    auto* tools = new QHBoxLayout;
    const auto addButton = [&](const char* name, const QString& text) {
        auto* button = new QPushButton(text);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        tools->addWidget(button);
        return button;
    };
    auto* menu = new QMenu(this);
    createMenu(menu);
    addButton("m_add", tr("&Add"))->setMenu(menu);
    connect(addButton("m_remove", tr("&Remove")), &QPushButton::clicked, m_table,
            &Table::removeSelectedLines);
    tools->addStretch();
    connect(addButton("m_load", tr("&Load...")), &QPushButton::clicked, this, &zoAssistantSurveyDialog::load);
    connect(addButton("m_save", tr("&Save...")), &QPushButton::clicked, this, &zoAssistantSurveyDialog::save);

    auto* below = new QHBoxLayout;
    below->addWidget(m_sign, 0, Qt::AlignTop);
    below->addWidget(m_message, 1);
    below->addWidget(m_buttons, 0, Qt::AlignBottom);
    auto* layout = new QGridLayout(this);
    layout->addLayout(tools, 0, 0);
    layout->addWidget(m_table, 1, 0);
    layout->addWidget(m_room, 0, 1, 2, 1);
    layout->addWidget(m_verdict, 2, 0, 1, 2);
    layout->addLayout(below, 3, 0, 1, 2);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(1, 1);
    layout->setHorizontalSpacing(12);
}

void zoAssistantSurveyDialog::load()
{
    const QString name =
        QFileDialog::getOpenFileName(this, tr("Load Measurements"), m_folder,
                                     tr("Measurements (*.txt)") + zoText(";;") + tr("All files (*)"));
    if (!name.isEmpty())
        loadFile(name);
}

void zoAssistantSurveyDialog::save()
{
    QString name =
        QFileDialog::getSaveFileName(this, tr("Save Measurements"), m_folder, tr("Measurements (*.txt)"));
    if (!name.isEmpty() && QFileInfo(name).suffix().isEmpty())
        name += zoText(".txt");
    if (!name.isEmpty())
        saveFile(name);
}

bool zoAssistantSurveyDialog::loadFile(const QString& fileName)
{
    QByteArray bytes;
    QString reason;
    // Beyond this the table is no place for it.
    constexpr int MostBytes = 1024 * 1024;
    if (zoFileReader::read(fileName, bytes, &reason) != zoFileReader::Result::Read ||
        bytes.size() > MostBytes) {
        tellFlaw(tr("%1 cannot be read: %2")
                     .arg(fileName, reason.isEmpty() ? tr("it has more than 1 MiB") : reason));
        return false;
    }
    m_folder = QFileInfo(fileName).absolutePath();
    m_table->setText(zoFileText(bytes).text());
    review();
    return true;
}

bool zoAssistantSurveyDialog::saveFile(const QString& fileName)
{
    QString reason;
    if (zoFileWriter::write(fileName, m_table->text().toUtf8(), &reason) != zoFileWriter::Result::Written) {
        tellFlaw(tr("%1 cannot be written: %2").arg(fileName, reason));
        return false;
    }
    m_folder = QFileInfo(fileName).absolutePath();
    return true;
}

bool zoAssistantSurveyDialog::findList(const QString& name, QString& text, QString& reason) const
{
    QByteArray bytes;
    if (zoFileReader::read(QDir(m_folder).filePath(name), bytes, &reason) != zoFileReader::Result::Read)
        return false;
    text = zoFileText(bytes).text();
    return true;
}

void zoAssistantSurveyDialog::review()
{
    m_timer.stop();
    readText();
    showRoom();
    showResiduals();
    m_verdict->setText(verdict());
    tell();
}

void zoAssistantSurveyDialog::readText()
{
    zoHPCSurveyReader reader(
        [this](const QString& name, QString& text, QString& reason) { return findList(name, text, reason); });
    m_mistake.clear();
    m_mistakeRow = -1;
    m_solution = zoHPCSurveySolution();
    const bool isGood = reader.read(m_table->text());
    m_survey = reader.survey();
    if (isGood) {
        m_solution = zoHPCSurveySolver::solve(m_survey);
        return;
    }
    const zoHPCSurveyReader::Mistake& first = reader.mistakes().front();
    m_mistakeRow = first.file.isEmpty() ? first.line - 1 : -1;
    m_mistake = told({first.file, first.line, first.text});
}

QString zoAssistantSurveyDialog::told(const zoHPCSurvey::Remark& remark)
{
    const QString line = QString::number(remark.line);
    return remark.file.isEmpty() ? tr("Line %1: %2").arg(line, remark.text)
                                 : tr("%1, line %2: %3").arg(remark.file, line, remark.text);
}

// Of a point list the line that names it.
std::size_t zoAssistantSurveyDialog::rowOf(const zoHPCSurvey::Measurement& measurement) const
{
    const bool isInText = measurement.file.isEmpty();
    const int line =
        isInText ? measurement.line : m_survey.instruments[std::size_t(measurement.instrument)].line;
    return std::size_t(line - 1);
}

void zoAssistantSurveyDialog::showResiduals()
{
    std::vector<Table::Verdict> verdicts(std::size_t(m_table->rowCount()));
    std::vector<double> largest(verdicts.size(), -1.0);
    for (std::size_t i = 0; i < m_solution.residuals.size(); ++i) {
        const zoHPCSurvey::Measurement& measurement = m_survey.measurements[i];
        const zoHPCSurveySolution::Residual& residual = m_solution.residuals[i];
        const std::size_t row = rowOf(measurement);
        Table::Verdict& verdict = verdicts.at(row);
        verdict.isWorst = verdict.isWorst || int(i) == m_solution.worst;
        if (std::abs(residual.millimetres) <= largest[row])
            continue;
        // A line may have several, of which the largest is shown.
        largest[row] = std::abs(residual.millimetres);
        verdict.residual = number(residual.millimetres, 1);
        verdict.checked = tr("%1 %").arg(number(100.0 * residual.redundancy, 0));
        verdict.toolTip =
            tr("%1: measured %2, fits %3")
                .arg(measurement.text, number(residual.measured, 2), number(residual.fitted, 2));
    }
    if (m_mistakeRow >= 0 && m_mistakeRow < int(verdicts.size())) {
        verdicts[std::size_t(m_mistakeRow)].isMistake = true;
        verdicts[std::size_t(m_mistakeRow)].residual = zoText("?");
        verdicts[std::size_t(m_mistakeRow)].toolTip = m_mistake;
    }
    for (int row = 0; row < m_table->rowCount(); ++row)
        m_table->setVerdict(row, verdicts[std::size_t(row)]);
}

// The configuration that is open with the measured planes; what is undetermined is shown all the same.
void zoAssistantSurveyDialog::showRoom()
{
    m_result.clear();
    if (!m_mistake.isEmpty())
        return;
    zoHPCConfiguration configuration;
    if (!m_configuration || !configuration.readText(m_configuration->text())) {
        configuration.hosts().setDefaultConfig();
        configuration.displays().setDefaultConfig();
    }
    zoHPCSurveyPlanes planes(m_survey, m_solution);
    if (!planes.putInto(configuration)) {
        // Sizes of a room that can still move say nothing.
        if (m_solution.isDetermined() || planes.unusable().isEmpty())
            m_mistake = planes.mistake();
        return;
    }
    m_room->showConfiguration(configuration.text());
    if (m_solution.isDetermined())
        m_result = configuration.text();
}

QString zoAssistantSurveyDialog::verdict() const
{
    if (!m_mistake.isEmpty() || !m_solution.isDetermined())
        return {};
    for (std::size_t i = 0; i < m_solution.deviations.size(); ++i) {
        if (m_solution.deviations[i] > zoHPCSurveySolution::Weak)
            return tr("\"%1\" is held weakly: measure across it, from a place in front of it.")
                .arg(m_survey.walls[i].name);
    }
    if (m_solution.redundancy == 0)
        return tr("Nothing was measured twice: a mistake in any line would not be seen.");
    if (m_solution.worst < 0)
        return tr("All measurements agree.");
    const QString name = m_survey.measurements[std::size_t(m_solution.worst)].text;
    const zoHPCSurveySolution::Residual& residual = m_solution.residuals[std::size_t(m_solution.worst)];
    const bool isAngle = zoHPCSurvey::isAngle(m_survey.measurements[std::size_t(m_solution.worst)].kind);
    if (!m_solution.hasMistake())
        return tr("Fits worst, and well enough: %1, off by %2 mm.")
            .arg(name, number(residual.millimetres, 1));
    const QString size = isAngle ? tr("%1 degrees").arg(number(std::abs(residual.mistake), 2))
                                 : tr("%1 mm").arg(number(std::abs(residual.mistake), 1));
    QString text = residual.mistake > 0.0
                       ? tr("Most likely a mistake: %1, about %2 too large.").arg(name, size)
                       : tr("Most likely a mistake: %1, about %2 too small.").arg(name, size);
    constexpr int Most = 3;
    for (int i = 0; i < int(m_solution.rivals.size()) && i < Most; ++i) {
        const int rival = m_solution.rivals[std::size_t(i)];
        text += QLatin1Char(' ') +
                tr("Or %1, which would look the same.").arg(m_survey.measurements[std::size_t(rival)].text);
    }
    return text;
}

void zoAssistantSurveyDialog::tell()
{
    const QString obstacle = m_configuration ? m_configuration->obstacle() : QString();
    m_buttons->button(QDialogButtonBox::Ok)
        ->setEnabled(m_configuration && obstacle.isEmpty() && !m_result.isEmpty());
    m_sign->setVisible(false);
    if (!m_configuration)
        tellFlaw(tr("This host lets no module change the configuration."));
    else if (!obstacle.isEmpty())
        tellFlaw(sentence(obstacle));
    else if (!m_mistake.isEmpty())
        tellFlaw(sentence(m_mistake));
    else if (!m_solution.isDetermined())
        tellFlaw(sentence(m_solution.undetermined.constFirst()));
    else if (!m_survey.remarks.empty())
        tellFlaw(sentence(told(m_survey.remarks.front())));
    else
        m_message->setText(
            tr("The planes take the place of those of the same names; windows go on showing them. Undo "
               "brings the present ones back."));
}

void zoAssistantSurveyDialog::tellFlaw(const QString& text)
{
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size));
    constexpr int Margin = 8; // between it and the message, in pixels
    m_sign->setFixedWidth(size + Margin);
    m_sign->setVisible(true);
    m_message->setText(text);
}

void zoAssistantSurveyDialog::accept()
{
    // What was typed last counts.
    if (m_timer.isActive())
        review();
    if (!m_buttons->button(QDialogButtonBox::Ok)->isEnabled() || !m_configuration)
        return;
    QString refusal;
    if (!m_configuration->replace(m_result, tr("Measured room"), &refusal)) {
        tellFlaw(refusal);
        return;
    }
    if (m_text)
        *m_text = m_table->text();
    QDialog::accept();
}

void zoAssistantSurveyDialog::reject()
{
    if (m_text)
        *m_text = m_table->text();
    QDialog::reject();
}
