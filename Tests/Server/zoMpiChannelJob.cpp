// One process of a job that tries the channel of MPI: each rank sends messages of the sizes that are named to rank 0
// and to itself, then all pass a number of barriers. Rank 0 prints one line. Arguments: the component's file, sizes
// separated by commas, the number of barriers.

#include <zoServerChannel.h>

#include <QCoreApplication>
#include <QHash>
#include <QLibrary>
#include <QStringList>

#include <cstdio>
#include <memory>

namespace
{
class Job final
{
public:
    Job(zoServerChannel& channel, const QStringList& sizes, int barriers)
        : m_channel(channel), m_sizes(sizes), m_barriersLeft(barriers)
    {
    }

    zoServerChannel::Handlers handlers()
    {
        return {[this](int rank, const QByteArray& message) { receive(rank, message); },
                [this] { passBarrier(); },
                [](const QString& reason) {
                    std::fprintf(stderr, "failed: %s\n", qPrintable(reason));
                    QCoreApplication::exit(2);
                }};
    }

    void begin()
    {
        m_expected = m_sizes.size() * (m_channel.rank() == 0 ? 1 + m_channel.size() : 1);
        for (int index = 0; index < m_sizes.size(); ++index) {
            m_channel.send(0, message(m_channel.rank(), index));
            m_channel.send(m_channel.rank(), message(m_channel.rank(), index));
        }
        m_channel.send(m_channel.size(), "nobody");
        m_channel.send(-1, "nobody");
    }

private:
    // Bytes that tell sender and place; the first size is that of the first message of each sender, and so on.
    QByteArray message(int rank, int index) const
    {
        return QByteArray(m_sizes[index].toInt(), static_cast<char>('a' + (rank * 7 + index) % 26));
    }

    void receive(int rank, const QByteArray& bytes)
    {
        // Rank 0 has its own messages twice.
        const int count = m_received[rank]++;
        const int index = rank == 0 && m_channel.rank() == 0 ? count / 2 : count;
        if (index >= m_sizes.size() || bytes != message(rank, index)) {
            std::fprintf(stderr, "rank %d: wrong message %d of rank %d\n", m_channel.rank(), count, rank);
            QCoreApplication::exit(3);
            return;
        }
        if (--m_expected == 0)
            m_channel.enterBarrier();
    }

    void passBarrier()
    {
        if (--m_barriersLeft > 0) {
            m_channel.enterBarrier();
            return;
        }
        if (m_channel.rank() == 0) {
            std::printf("%d ranks agree\n", m_channel.size());
            std::fflush(stdout);
        }
        QCoreApplication::exit(m_channel.close(-1) ? 0 : 4);
    }

    zoServerChannel& m_channel;
    QStringList m_sizes;
    QHash<int, int> m_received;
    int m_expected = 0;
    int m_barriersLeft;
};
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QLibrary component(arguments.value(1));
    const auto create = reinterpret_cast<zoServerChannelFactory>(component.resolve("zoServerChannelCreate"));
    if (!create) {
        std::fprintf(stderr, "%s\n", qPrintable(component.errorString()));
        return 1;
    }
    const std::unique_ptr<zoServerChannel> channel(create());
    Job job(*channel, arguments.value(2).split(QLatin1Char(',')), arguments.value(3).toInt());
    QString reason;
    if (!channel->open(job.handlers(), reason)) {
        std::fprintf(stderr, "%s\n", qPrintable(reason));
        return 1;
    }
    job.begin();
    return application.exec();
}
