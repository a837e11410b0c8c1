#include "zoParaViewSetup.h"

QStringList zoParaViewSetup::changedNodes(const zoParaViewSetup& other) const
{
    QStringList nodes;
    QMap<QString, QByteArray> texts[2];
    const std::vector<Machine>* const lists[] = {&machines, &other.machines};
    for (int side = 0; side < 2; ++side) {
        for (const Machine& machine : *lists[side]) {
            if (!nodes.contains(machine.node))
                nodes << machine.node;
            texts[side][machine.node] += machine.text;
        }
    }
    QStringList changed;
    for (const QString& node : qAsConst(nodes)) {
        if (texts[0].value(node) != texts[1].value(node))
            changed << node;
    }
    return changed;
}
