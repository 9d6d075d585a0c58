#include "shell/start/HandOverServer.h"

#include "shell/start/HandOverMessage.h"

#include <QElapsedTimer>
#include <QSocketNotifier>

#include <algorithm>
#include <functional>
#include <utility>

namespace {

/// After so many the event loop runs again.
constexpr int AcceptedAtOnce = 64;
constexpr std::chrono::milliseconds RetryAfter{100};

}  // namespace

/// A connection, and what has arrived through it.
class HandOverServer::Sender {
 public:
    explicit Sender(LocalSocket socket) : m_socket(std::move(socket)), m_process(m_socket.process()) {
        m_since.start();
    }

    /// Reads what is there. Returns whether it completes the message; a sender that can send none any more is done too.
    bool read() {
        while (m_reader.missing() > 0) {
            const qsizetype before = m_reader.bytes().size();
            if (!m_socket.read(m_reader.bytes(), m_reader.missing())) {
                end();
                return false;
            }
            if (m_reader.bytes().size() == before)
                return false;
        }
        const bool first = !isDone();
        end();
        return first && m_reader.state() == HandOverReader::State::Complete;
    }

    /// From now on `ready` is called when there is more to read.
    void follow(const std::function<void()>& ready) {
        m_more = std::make_unique<QSocketNotifier>(m_socket.handle(), QSocketNotifier::Read);
        QObject::connect(m_more.get(), &QSocketNotifier::activated, m_more.get(), ready);
    }

    bool isDone() const { return !m_socket.isOpen(); }
    QString path() const { return m_reader.path(); }
    qint64 process() const { return m_process; }
    std::chrono::milliseconds age() const { return std::chrono::milliseconds(m_since.elapsed()); }

 private:
    void end() {
        if (m_more)
            m_more->setEnabled(false);
        m_socket.close();
    }

    LocalSocket m_socket;
    qint64 m_process;
    HandOverReader m_reader;
    QElapsedTimer m_since;
    std::unique_ptr<QSocketNotifier> m_more;
};

HandOverServer::HandOverServer(const QString& path, Limits limits)
    : m_listener(path), m_limits(limits), m_arrivals(QSocketNotifier::Read) {
    m_overdue.setSingleShot(true);
    m_retry.setSingleShot(true);
    m_retry.setInterval(RetryAfter);
    connect(&m_arrivals, &QSocketNotifier::activated, this, &HandOverServer::acceptWaiting);
    connect(&m_overdue, &QTimer::timeout, this, &HandOverServer::dropOverdue);
    connect(&m_retry, &QTimer::timeout, this, &HandOverServer::followLoad);
    if (isListening())
        m_arrivals.setSocket(m_listener.handle());
    followLoad();
}

HandOverServer::~HandOverServer() = default;

void HandOverServer::acceptWaiting() {
    for (int i = 0; i < AcceptedAtOnce && !isFull(); ++i) {
        LocalListener::Failure failure{};
        LocalSocket socket = m_listener.accept(failure);
        if (failure == LocalListener::Failure::NoRoom)
            m_retry.start();
        if (!socket.isOpen())
            break;
        if (socket.isOfThisUser())
            take(std::make_unique<Sender>(std::move(socket)));
    }
    followLoad();
}

/// Most senders have sent their message when they are accepted. A process that passes several paths makes a connection
/// for each, one after the other, so that what it sent through an earlier one is there.
void HandOverServer::take(std::unique_ptr<Sender> sender) {
    for (const std::unique_ptr<Sender>& earlier : m_senders) {
        if (earlier->process() == sender->process())
            readFrom(*earlier);
    }
    readFrom(*sender);
    if (sender->isDone())
        return;
    sender->follow([this, held = sender.get()] {
        readFrom(*held);
        followLoad();
    });
    m_senders.push_back(std::move(sender));
}

void HandOverServer::readFrom(Sender& sender) {
    if (!sender.isDone() && sender.read())
        Q_EMIT received(sender.path());
}

void HandOverServer::dropOverdue() {
    const std::chrono::milliseconds limit = patience();
    std::erase_if(m_senders, [limit](const std::unique_ptr<Sender>& sender) {
        return sender->isDone() || sender->age() >= limit;
    });
    followLoad();
}

/// Sets when this object acts next. Senders that are done are destroyed later: it may be one of them that calls.
void HandOverServer::followLoad() {
    m_arrivals.setEnabled(isListening() && !isFull() && !m_retry.isActive());
    if (m_senders.empty()) {
        m_overdue.stop();
        return;
    }
    const bool someDone = std::ranges::any_of(m_senders, [](const auto& sender) { return sender->isDone(); });
    const std::chrono::milliseconds rest = patience() - m_senders.front()->age();
    m_overdue.start(someDone ? std::chrono::milliseconds(0) : std::max(rest, std::chrono::milliseconds(0)));
}
