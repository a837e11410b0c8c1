#include "zoNodeSessionFactory.h"

#include <QApplication>

// Sessions whose nodes are programs of their own on this machine keep the contract.
class tst_zoNodeClusterServiceContract final : public zoClusterServiceContract
{
    Q_OBJECT

public:
    tst_zoNodeClusterServiceContract()
        : zoClusterServiceContract(
              zoNodeSessionFactory::rehearsals(zoNodeClusterService::Mpi::BetweenMachines))
    {
    }
};

ZO_TEST_MAIN(tst_zoNodeClusterServiceContract)
#include "tst_zoNodeClusterServiceContract.moc"
