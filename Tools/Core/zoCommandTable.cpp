#include "zoCommandTable.h"

#include "zoCheckCommand.h"
#include "zoConvertCommand.h"
#include "zoDescribeCommand.h"
#include "zoDiffCommand.h"
#include "zoDrawCommand.h"
#include "zoExportCommand.h"
#include "zoFormatCommand.h"
#include "zoGetCommand.h"
#include "zoHostsExpandCommand.h"
#include "zoHostsFoldCommand.h"
#include "zoHostsTreeCommand.h"
#include "zoMergeCommand.h"
#include "zoNewCommand.h"
#include "zoNodesCommand.h"
#include "zoReportCommand.h"
#include "zoSetCommand.h"
#include "zoSurveyCommand.h"
#include "zoTopologyCommand.h"

#include <QtGlobal>

// Compiled into both programs: the commands of zohpc-document need the module's classes, and with them
// libraries that take long to load; the others start in a few milliseconds.
namespace
{
template <class Command>
std::unique_ptr<zoCommand> create()
{
    return std::make_unique<Command>();
}

// Of a command that zohpc-document serves.
template <class Command>
constexpr auto createInDocument() -> std::unique_ptr<zoCommand> (*)()
{
#ifdef ZO_DOCUMENT_COMMANDS
    return create<Command>;
#else
    return nullptr;
#endif
}
} // namespace

const std::vector<zoCommandEntry>& zoCommandTable::entries()
{
    static const std::vector<zoCommandEntry> entries{
        {"check",
         QT_TRANSLATE_NOOP("zohpc", "the problems that keep windows of a configuration dark or wrong"),
         createInDocument<zoCheckCommand>()},
        {"convert", QT_TRANSLATE_NOOP("zohpc", "a legacy configuration in the present format"),
         createInDocument<zoConvertCommand>()},
        {"describe",
         QT_TRANSLATE_NOOP("zohpc", "what there is to know about a configuration, in a dozen lines"),
         createInDocument<zoDescribeCommand>()},
        {"diff", QT_TRANSLATE_NOOP("zohpc", "what differs between two configurations, in words"),
         createInDocument<zoDiffCommand>()},
        {"draw", QT_TRANSLATE_NOOP("zohpc", "the room, the screens or the networks as a picture"),
         createInDocument<zoDrawCommand>(), true},
        {"export", QT_TRANSLATE_NOOP("zohpc", "the same wall for other engines that render distributed"),
         createInDocument<zoExportCommand>()},
        {"format", QT_TRANSLATE_NOOP("zohpc", "a configuration in the canonical text"),
         createInDocument<zoFormatCommand>()},
        {"get", QT_TRANSLATE_NOOP("zohpc", "values of a configuration by their paths"),
         createInDocument<zoGetCommand>()},
        {"hosts expand", QT_TRANSLATE_NOOP("zohpc", "the names that hosts text stands for"),
         create<zoHostsExpandCommand>},
        {"hosts fold", QT_TRANSLATE_NOOP("zohpc", "names as hosts text, in as few words as possible"),
         create<zoHostsFoldCommand>},
        {"hosts tree", QT_TRANSLATE_NOOP("zohpc", "the networks of hosts text, with their gateways"),
         create<zoHostsTreeCommand>},
        {"merge", QT_TRANSLATE_NOOP("zohpc", "two configurations that came from one, for git and for people"),
         createInDocument<zoMergeCommand>()},
        {"new", QT_TRANSLATE_NOOP("zohpc", "a whole configuration of a wall or a cave from one line"),
         createInDocument<zoNewCommand>()},
        {"nodes", QT_TRANSLATE_NOOP("zohpc", "the names of the nodes, for pdsh, mpirun and ansible"),
         createInDocument<zoNodesCommand>()},
        {"report", QT_TRANSLATE_NOOP("zohpc", "sheets for those who build the wall, as a PDF"),
         createInDocument<zoReportCommand>(), true},
        {"set", QT_TRANSLATE_NOOP("zohpc", "changes values of a configuration by their paths"),
         createInDocument<zoSetCommand>()},
        {"survey", QT_TRANSLATE_NOOP("zohpc", "planes from what a tape measure or a total station gave"),
         createInDocument<zoSurveyCommand>()},
        {"topology", QT_TRANSLATE_NOOP("zohpc", "gateways as the topology.conf of ClusterShell, out and in"),
         createInDocument<zoTopologyCommand>()},
    };
    return entries;
}

const zoCommandEntry* zoCommandTable::find(const QString& name)
{
    for (const zoCommandEntry& entry : entries()) {
        if (name == QLatin1String(entry.name))
            return &entry;
    }
    return nullptr;
}
