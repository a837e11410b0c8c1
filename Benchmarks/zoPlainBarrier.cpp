// A job of MPI that does nothing but barriers. Rank 0 reads how many from standard input, again and again, and says "done"
// after them; the job ends with its input.

#include <mpi.h>

#include <cstdio>

int main(int argc, char** argv)
{
    MPI_Init(&argc, &argv);
    int rank = 0;
    MPI_Comm_rank(MPI_COMM_WORLD, &rank);
    for (;;) {
        int rounds = 0;
        if (rank == 0 && std::scanf("%d", &rounds) != 1)
            rounds = 0;
        MPI_Bcast(&rounds, 1, MPI_INT, 0, MPI_COMM_WORLD);
        if (rounds == 0)
            break;
        for (int i = 0; i < rounds; ++i)
            MPI_Barrier(MPI_COMM_WORLD);
        if (rank == 0) {
            std::puts("done");
            std::fflush(stdout);
        }
    }
    MPI_Finalize();
    return 0;
}
