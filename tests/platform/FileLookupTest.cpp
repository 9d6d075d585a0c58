#include "platform/FileLookup.h"

#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>
#include <semaphore>

using namespace std::chrono_literals;

namespace {

using Gate = std::counting_semaphore<>;

/// A disk on which the folder /dead does not answer before the gate lets it, and on which all files are there but those
/// named so.
FileLookup::Exists diskBehind(const std::shared_ptr<Gate>& gate) {
    return [gate](const QString& path) {
        if (path.startsWith(QLatin1String("/dead/")))
            gate->acquire();
        return !path.endsWith(QLatin1String("gone"));
    };
}

constexpr std::chrono::minutes Long{1};

}  // namespace

TEST(LookingForFiles, FindsWhatIsThere) {
    const QTemporaryDir folder;
    FileLookup lookup;
    EXPECT_TRUE(lookup.exists(folder.path()));
    EXPECT_FALSE(lookup.exists(folder.filePath(u"gone"_qs)));
    EXPECT_FALSE(lookup.exists({}));
    EXPECT_FALSE(lookup.exists(u"/a\0b"_qs));
}

TEST(LookingForFiles, EventsAreProcessedUntilALateAnswerComes) {
    const auto gate = std::make_shared<Gate>(0);
    FileLookup lookup(diskBehind(gate), Long);
    QTimer::singleShot(0, [&] { gate->release(); });
    EXPECT_TRUE(lookup.exists(u"/dead/a"_qs));
    QTimer::singleShot(0, [&] { gate->release(); });
    EXPECT_FALSE(lookup.exists(u"/dead/gone"_qs));
}

TEST(LookingForFiles, AFileThatDoesNotAnswerIsNotThereNorAreItsNeighboursMeanwhile) {
    const auto gate = std::make_shared<Gate>(0);
    FileLookup waits(diskBehind(gate), 1ms);
    EXPECT_FALSE(waits.exists(u"/dead/a"_qs));
    EXPECT_FALSE(waits.exists(u"/dead/b"_qs));
    gate->release();
    // An answer that came too late is forgotten, and the next question is a new one.
    QTimer::singleShot(50, [&] { gate->release(1000); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return waits.exists(u"/dead/b"_qs); }, 60'000));
    EXPECT_FALSE(waits.exists(u"/dead/gone"_qs));
}

TEST(LookingForFiles, AnotherFolderIsAskedThoughOneDoesNotAnswer) {
    const auto gate = std::make_shared<Gate>(0);
    FileLookup lookup(diskBehind(gate), 1ms);
    EXPECT_FALSE(lookup.exists(u"/dead/a"_qs));
    EXPECT_TRUE(QTest::qWaitFor([&] { return lookup.exists(u"/alive/a"_qs); }, 60'000));
    gate->release();
}
