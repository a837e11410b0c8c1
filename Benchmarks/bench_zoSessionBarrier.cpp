// How often a second all servers of a network are brought together: a frame of a session that shows nothing new, over pipes
// and over MPI, with real servers on this machine, beside a bare MPI_Barrier of as many processes, started by the same
// command, and bare bytes over TCP to as many processes and back.

#include "zoBenchmark.h"

#include <zoMpiGroup.h>
#include <zoMpirunCommand.h>
#include <zoPipeGroup.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QProcess>
#include <QTemporaryDir>

#include <cerrno>
#include <csignal>
#include <memory>

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
using zoBenchmark::require;

constexpr int s_limitMs = 60000;
constexpr int s_batch = 200;

// Processes that can be brought together.
class Peers
{
public:
    Peers() = default;
    Peers(const Peers&) = delete;
    Peers& operator=(const Peers&) = delete;
    virtual ~Peers() = default;
    virtual void meet(int times) = 0;
};

// As the head of a network does it.
class Servers final : public Peers
{
public:
    Servers(std::unique_ptr<zoServerGroup> group, int count) : m_group(std::move(group))
    {
        QObject::connect(m_group.get(), &zoServerGroup::received, m_group.get(),
                         [this](int key, const zoServerMessage& message) { hear(key, message); });
        std::vector<zoServerGroup::Member> members;
        for (int key = 0; key < count; ++key) {
            zoServerGroup::Member member;
            member.key = key;
            member.command = QStringList({QStringLiteral(ZO_SERVER_FILE), QStringLiteral("server")});
            member.program = member.command + QStringList(QStringLiteral("--mpi"));
            members.push_back(member);
            m_keys << key;
        }
        m_missing = count;
        m_group->add(members);
        wait();
    }

    ~Servers() override
    {
        bool isOver = false;
        QObject::connect(m_group.get(), &zoServerGroup::allEnded, m_group.get(),
                         [&isOver] { isOver = true; });
        m_group->removeAll();
        while (!isOver)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    void meet(int times) override
    {
        for (int i = 0; i < times; ++i) {
            const QJsonObject frame{{QStringLiteral("frame"), double(++m_frame)},
                                    {QStringLiteral("empty"), true}};
            m_missing = m_keys.size();
            m_group->send(m_keys, zoServerMessage::of("DRAW", frame));
            wait();
            m_group->send(m_keys, zoServerMessage::of("GO", frame));
        }
    }

private:
    void hear(int, const zoServerMessage& message)
    {
        if (message.verb == "HELLO" && m_frame == 0)
            --m_missing;
        else if (message.verb == "READY" && quint64(message.object().value("frame").toDouble()) == m_frame)
            --m_missing;
    }

    void wait() const
    {
        while (m_missing > 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        require(m_missing == 0, "an answer twice");
    }

    std::unique_ptr<zoServerGroup> m_group;
    QList<int> m_keys;
    quint64 m_frame = 0;
    int m_missing = 0;
};

class PlainMpi final : public Peers
{
public:
    explicit PlainMpi(int count)
    {
        zoMpirunCommand::Job job;
        job.sessionFolder = m_folder.path();
        job.isRoot = geteuid() == 0;
        job.machines.push_back({QString(), count, {QStringLiteral(ZO_PLAIN_BARRIER)}});
        const zoMpirunCommand command(job);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QMap<QString, QString> added = command.environment();
        for (auto it = added.cbegin(); it != added.cend(); ++it)
            environment.insert(it.key(), it.value());
        m_process.setProcessEnvironment(environment);
        m_process.start(command.program(), command.arguments());
        meet(1);
    }

    ~PlainMpi() override
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished(s_limitMs);
    }

    void meet(int times) override
    {
        m_process.write(QByteArray::number(times) + '\n');
        while (!m_process.canReadLine())
            require(m_process.waitForReadyRead(s_limitMs), "the job of MPI does not answer");
        require(m_process.readLine() == "done\n", "the job of MPI says something else");
    }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};

// A byte to each, and one back.
class PlainTcp final : public Peers
{
public:
    explicit PlainTcp(int count)
    {
        const int listener = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        require(bind(listener, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
                    listen(listener, count) == 0 &&
                    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) == 0,
                "no port");
        for (int i = 0; i < count; ++i) {
            const pid_t process = fork();
            if (process == 0)
                answer(address);
            m_processes.push_back(process);
            m_sockets.push_back(quick(accept(listener, nullptr, nullptr)));
        }
        close(listener);
    }

    ~PlainTcp() override
    {
        for (const int file : m_sockets)
            close(file);
        for (const pid_t process : m_processes) {
            ::kill(process, SIGKILL); // it has the sockets of those before it, too
            waitpid(process, nullptr, 0);
        }
    }

    void meet(int times) override
    {
        char byte = 0;
        for (int i = 0; i < times; ++i) {
            for (const int file : m_sockets)
                require(write(file, &byte, 1) == 1, "a byte does not leave");
            for (const int file : m_sockets)
                require(read(file, &byte, 1) == 1, "a byte does not come");
        }
    }

private:
    static int quick(int file)
    {
        const int on = 1;
        setsockopt(file, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        return file;
    }

    [[noreturn]] static void answer(const sockaddr_in& address)
    {
        const int file = socket(AF_INET, SOCK_STREAM, 0);
        char byte = 0;
        if (connect(file, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
            quick(file);
            while (read(file, &byte, 1) == 1 && write(file, &byte, 1) == 1) {
            }
        }
        _exit(0);
    }

    std::vector<int> m_sockets;
    std::vector<pid_t> m_processes;
};

enum class Kind { PlainTcp, Pipes, PlainMpi, Mpi };

struct Way
{
    Kind kind;
    const char* name;
};
constexpr Way s_ways[] = {{Kind::Pipes, "pipes"},
                          {Kind::PlainTcp, "plain TCP"},
                          {Kind::Mpi, "MPI"},
                          {Kind::PlainMpi, "plain MPI_Barrier"}};
constexpr int s_counts[] = {2, 4, 8};

std::unique_ptr<Peers> create(Kind kind, int count)
{
    switch (kind) {
    case Kind::PlainTcp:
        return std::make_unique<PlainTcp>(count);
    case Kind::PlainMpi:
        return std::make_unique<PlainMpi>(count);
    case Kind::Pipes: {
        zoPipeGroup::Limits limits;
        limits.startMs = s_limitMs;
        return std::make_unique<Servers>(std::make_unique<zoPipeGroup>(limits), count);
    }
    case Kind::Mpi:
        break;
    }
    zoMpiGroup::Job job;
    job.relay = QStringList({QStringLiteral(ZO_SERVER_FILE), QStringLiteral("relay")});
    zoMpiGroup::Limits limits;
    limits.startMs = s_limitMs;
    return std::make_unique<Servers>(std::make_unique<zoMpiGroup>(job, limits), count);
}

std::string nameOf(const Way& way, int count)
{
    return std::string(way.name) + " / " + std::to_string(count);
}

// One kind at a time: processes that wait for a barrier of MPI take what time they get.
struct Current
{
    std::string name;
    std::unique_ptr<Peers> peers;
};

void meet(benchmark::State& state, Current& current, const Way& way, int count)
{
    if (current.name != nameOf(way, count)) {
        current.peers.reset();
        current.peers = create(way.kind, count);
        current.name = nameOf(way, count);
        current.peers->meet(s_batch);
    }
    while (state.KeepRunningBatch(s_batch))
        current.peers->meet(s_batch);
}

// Keeps medians beside printing them.
class Rates final : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
                m_seconds[run.run_name.function_name] = run.GetAdjustedRealTime() / 1e6;
        }
        if (!m_isSilent)
            ConsoleReporter::ReportRuns(runs);
    }

    bool ReportContext(const Context& context) override
    {
        return m_isSilent || ConsoleReporter::ReportContext(context);
    }

    void setSilent(bool silent) { m_isSilent = silent; }

    // Times a second; 0 when it did not run.
    double of(const Way& way, int count) const
    {
        const auto found = m_seconds.find(nameOf(way, count));
        return found == m_seconds.end() ? 0.0 : 1.0 / found->second;
    }

private:
    bool m_isSilent = false;
    std::map<std::string, double> m_seconds;
};

void printTable(const Rates& rates)
{
    std::printf("| servers | pipes | plain TCP | ratio | MPI | plain MPI_Barrier | ratio | MPI to pipes |\n"
                "|---|---|---|---|---|---|---|---|\n");
    for (const int count : s_counts) {
        double value[std::size(s_ways)] = {};
        for (std::size_t i = 0; i < std::size(s_ways); ++i)
            value[i] = rates.of(s_ways[i], count);
        const auto ratio = [](double a, double b) { return b > 0.0 ? a / b : 0.0; };
        std::printf("| %d | %.0f /s | %.0f /s | %.2f | %.0f /s | %.0f /s | %.2f | %.2f |\n", count, value[0],
                    value[1], ratio(value[0], value[1]), value[2], value[3], ratio(value[2], value[3]),
                    ratio(value[2], value[0]));
    }
}
} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN);
    const QCoreApplication application(argc, argv);
    bool isMarkdown = false;
    for (int i = 1; i < argc; ++i)
        isMarkdown = isMarkdown || std::string(argv[i]) == "--markdown";
    benchmark::Initialize(&argc, argv);
    Current current;
    for (const int count : s_counts) {
        for (const Way& way : s_ways) {
            benchmark::RegisterBenchmark(
                nameOf(way, count).c_str(),
                [&current, way, count](benchmark::State& state) { meet(state, current, way, count); })
                ->Unit(benchmark::kMicrosecond)
                ->UseRealTime()
                ->Repetitions(5)
                ->ReportAggregatesOnly(true)
                ->MinTime(0.3);
        }
    }
    Rates rates;
    rates.setSilent(isMarkdown);
    benchmark::RunSpecifiedBenchmarks(&rates);
    printTable(rates);
    return 0;
}
