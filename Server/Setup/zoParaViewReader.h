#pragma once

#include <zoHPCConfiguration.h>
#include <zoHPCRenderSetup.h>
#include <zoParaViewSetup.h>

#include <QCoreApplication>
#include <QHash>

#include <memory>

// Reads a configuration document as the setup of a session of ParaView's server.
class zoParaViewReader final
{
    Q_DECLARE_TR_FUNCTIONS(zoParaViewReader)

public:
    // False, with the setup as it was and the reason, for a text that is no configuration.
    static bool read(const QString& document, const zoParaViewSetup::Request& request, zoParaViewSetup& setup,
                     QString& reason);

private:
    explicit zoParaViewReader(const zoParaViewSetup::Request& request) : m_request(request) {}

    void readMachines();
    void readNetwork();
    void readNotes();
    void readGateways();

    zoParaViewSetup::Request m_request;
    zoHPCConfiguration m_configuration;
    std::unique_ptr<zoHPCRenderSetup> m_render;
    QHash<const QTreeWidgetItem*, QString> m_ids;
    zoParaViewSetup m_setup;
};
