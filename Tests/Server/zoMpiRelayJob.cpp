// The relay of a job of two servers, without MPI. Server 1 sends many bytes when it is told FLOOD, and takes nothing from
// HOLD on until server 2 got ten beats more; told COUNT, it says how many DATA it got. Server 2 says each beat on
// standard error.

#include <zoMpiRelay.h>
#include <zoServerChannel.h>
#include <zoServerMessage.h>

#include <QCoreApplication>

#include <cstdio>
#include <memory>

namespace
{
constexpr int s_ranks = 3;
constexpr int s_beats = 10;
constexpr int s_blocks = 12;
constexpr int s_blockSize = 1024 * 1024;

class Channel final : public zoServerChannel
{
public:
    bool open(const Handlers& handlers, QString&) override
    {
        m_handlers = handlers;
        return true;
    }
    int rank() const override { return 0; }
    int size() const override { return s_ranks; }
    void send(int rank, const QByteArray& message) override
    {
        if (message.startsWith("FLOOD ")) {
            for (int i = 0; i < s_blocks; ++i)
                deliver(zoServerMessage{"DATA", QByteArray(s_blockSize, 'x')}.encoded());
        } else if (message.startsWith("HOLD ")) {
            m_held = 2 * s_blocks * qint64(s_blockSize);
            m_beats = s_beats;
        } else if (message.startsWith("DATA ")) {
            ++m_count;
        } else if (message.startsWith("COUNT ")) {
            deliver(zoServerMessage{"COUNT", QByteArray::number(m_count)}.encoded());
        } else if (rank == 2 && message.startsWith("BEAT ")) {
            std::fputs("beat\n", stderr);
            if (m_beats > 0 && --m_beats == 0) {
                m_held = 0;
                deliver(zoServerMessage{"TAKEN", {}}.encoded());
            }
        }
    }
    qint64 bytesToSend() const override { return m_held; }
    int arrived() const override { return 0; }
    void enterBarrier() override {}
    bool close(int) override { return true; }

private:
    void deliver(const QByteArray& message)
    {
        QMetaObject::invokeMethod(
            &m_home, [this, message] { m_handlers.received(1, message); }, Qt::QueuedConnection);
    }

    QObject m_home;
    Handlers m_handlers;
    qint64 m_held = 0;
    int m_beats = 0;
    int m_count = 0; // of DATA
};
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    zoMpiRelay relay(std::make_unique<Channel>());
    return relay.open() ? QCoreApplication::exec() : 1;
}
