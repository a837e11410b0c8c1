#include "zoNodeSessionFactory.h"

#include <QApplication>

namespace
{
zoClusterServiceContract::Factory jobs()
{
    zoClusterServiceContract::Factory factory =
        zoNodeSessionFactory::rehearsals(zoNodeClusterService::Mpi::Always);
    factory.namesAllLosses = false; // mpirun names the first one
    return factory;
}
} // namespace

// Sessions whose nodes are ranks of a job of MPI on this machine keep the contract.
class tst_zoMpiClusterServiceContract final : public zoClusterServiceContract
{
    Q_OBJECT

public:
    tst_zoMpiClusterServiceContract() : zoClusterServiceContract(jobs()) {}
};

ZO_TEST_MAIN(tst_zoMpiClusterServiceContract)
#include "tst_zoMpiClusterServiceContract.moc"
