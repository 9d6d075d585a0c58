#include "platform/ChildProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

using Answer = ChildProcess::Answer;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds Patience{20'000};

void echo(ParentLink& link) {
    while (const auto message = link.receive()) {
        if (!link.send(*message))
            return;
    }
}

/// Waits until the child has ended; the messages before that.
int messagesOf(ChildProcess& child) {
    QByteArray message;
    int count = 0;
    while (child.receive(message, Patience) == Answer::Received)
        ++count;
    return count;
}

}  // namespace

TEST(ChildProcess, MessagesGoBothWaysWholeAndInOrder) {
    ChildProcess child(echo);
    ASSERT_FALSE(child.error());
    const QByteArray large(ChildProcess::MostBytes, 'x');
    for (const QByteArray& sent : {QByteArray("one"), QByteArray(), QByteArray("\0b", 2), large}) {
        ASSERT_TRUE(child.send(sent));
        QByteArray received;
        ASSERT_EQ(child.receive(received, Patience), Answer::Received);
        EXPECT_EQ(received, sent);
    }
}

TEST(ChildProcess, SeveralMessagesMayWait) {
    ChildProcess child([](ParentLink& link) {
        for (const char* each : {"a", "b", "c"})
            link.send(each);
    });
    EXPECT_EQ(messagesOf(child), 3);
}

TEST(ChildProcess, AnAnswerThatIsNotThereIsPending) {
    ChildProcess child(echo);
    QByteArray message;
    EXPECT_EQ(child.receive(message, milliseconds(0)), Answer::Pending);
    EXPECT_EQ(child.receive(message, milliseconds(5)), Answer::Pending);
    ASSERT_TRUE(child.send(QByteArrayView("late")));
    EXPECT_EQ(child.receive(message, Patience), Answer::Received);
}

TEST(ChildProcess, ACrashEndsTheChildAlone) {
    ChildProcess child([](ParentLink&) { std::raise(SIGKILL); });
    QByteArray message;
    EXPECT_EQ(child.receive(message, Patience), Answer::Ended);
    EXPECT_EQ(child.receive(message, Patience), Answer::Ended);
}

TEST(ChildProcess, WorkThatThrowsEndsWithoutAWord) {
    ChildProcess child([](ParentLink&) { throw std::bad_alloc(); });
    EXPECT_EQ(messagesOf(child), 0);
}

TEST(ChildProcess, AChildThatTakesTooMuchMemoryEnds) {
    ChildProcess child([](ParentLink& link) {
        std::vector<std::string> all;
        for (int i = 0; i < 64; ++i)
            all.emplace_back().reserve(ChildProcess::MostMemory / 32);
        link.send("all of it");
    });
    EXPECT_EQ(messagesOf(child), 0);
}

TEST(ChildProcess, AnEndlessChildEndsWithItsOwner) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    pid_t process = 0;
    {
        ChildProcess child([](ParentLink& link) {
            link.send(std::to_string(getpid()));
            for (;;)
                pause();
        });
        QByteArray message;
        ASSERT_EQ(child.receive(message, Patience), Answer::Received);
        process = message.toInt();
        EXPECT_EQ(kill(process, 0), 0);
    }
    for (int i = 0; i < 1000 && kill(process, 0) == 0; ++i)
        usleep(10'000);
    EXPECT_NE(kill(process, 0), 0);
    close(ends[0]);
    close(ends[1]);
}

TEST(ChildProcess, TheChildHasNoneOfTheOpenFiles) {
    const int file = open("/dev/null", O_RDONLY);
    ASSERT_GT(file, 3);
    ChildProcess child([file](ParentLink& link) { link.send(fcntl(file, F_GETFD) < 0 ? "closed" : "open"); });
    QByteArray message;
    ASSERT_EQ(child.receive(message, Patience), Answer::Received);
    EXPECT_EQ(message, QByteArray("closed"));
    EXPECT_GE(fcntl(file, F_GETFD), 0);
    close(file);
}

TEST(ChildProcess, MessagesThatAreTooLongAreRefused) {
    ChildProcess child([](ParentLink& link) {
        const bool isSent = link.send(std::string(ChildProcess::MostBytes + 1, 'x'));
        link.send(isSent ? "sent" : "refused");
    });
    EXPECT_FALSE(child.send(QByteArray(ChildProcess::MostBytes + 1, 'x')));
    QByteArray message;
    ASSERT_EQ(child.receive(message, Patience), Answer::Received);
    EXPECT_EQ(message, QByteArray("refused"));
}

TEST(ChildProcess, AnAnswerWithoutEndIsNotCollected) {
    ChildProcess child([](ParentLink&) {
        const std::string much(65536, '\xFF');  // announces four gigabytes
        while (write(3, much.data(), much.size()) > 0) {
        }
    });
    EXPECT_EQ(messagesOf(child), 0);
}
