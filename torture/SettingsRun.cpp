#include "SettingsRun.h"

#include "Contents.h"
#include "FaultyStore.h"
#include "SceneFiles.h"
#include "settings/registry/SqliteRegistry.h"

#include <algorithm>

namespace {

using Scene = SettingsRun::Scene;

constexpr Scene Scenes[] = {
    {"first setting", false, 1, 20},
    {"first settings in one step", false, 3, 20},
    {"setting", true, 1, 20},
    {"settings in one step", true, 3, 20},
    {"large setting", true, 1, 200'000},
    {"large settings in one step", true, 4, 60'000},
};
constexpr RegistryRoot Root = HKEY_CURRENT_USER;

QString key() {
    return u"Software\\Torture"_qs;
}

QByteArray bytesBefore(const Scene& scene) {
    return noise(scene.length, 1);
}
QByteArray bytesAfter(const Scene& scene) {
    return noise(scene.length, 2);
}

int writeValue(RegistryStore& store, int number, const QByteArray& bytes) {
    return store.writeValue(Root, key(), QString::number(number), {RegistryType::Binary, bytes});
}

}  // namespace

std::span<const SettingsRun::Scene> SettingsRun::scenes() {
    return Scenes;
}

void SettingsRun::run() {
    for (const Scene& scene : Scenes) {
        FaultyStore::reset();
        prepare(scene);
        FaultyStore::reset();
        if (!write(scene, bytesAfter(scene)))
            m_report.fault(scene.name, "cannot be written without a fault");
        const int calls = FaultyStore::calls();
        m_report.count("scenes of faults in the settings store");
        for (int call = 0; call < calls; ++call) {
            for (const bool isLasting : {false, true}) {
                if (!m_effort.isOver() && m_effort.takes())
                    tryFault(scene, call, isLasting);
            }
        }
    }
}

QString SettingsRun::store() const {
    return QString::fromLocal8Bit(m_root) + u"/settings/store.db"_qs;
}

void SettingsRun::prepare(const Scene& scene) const {
    emptyFolder(m_root + "/settings");
    if (scene.hasStore)
        mustWork(write(scene, bytesBefore(scene)), "cannot write the first time");
}

bool SettingsRun::write(const Scene& scene, const QByteArray& bytes) const {
    SqliteRegistry store(this->store());
    if (scene.values == 1)
        return writeValue(store, 0, bytes) == RegistryCode::Ok;
    const auto writeAll = [&] {
        int code = RegistryCode::Ok;
        for (int i = 0; i < scene.values && code == RegistryCode::Ok; ++i)
            code = writeValue(store, i, bytes);
        return code;
    };
    return store.runBatch(writeAll) == RegistryCode::Ok;
}

void SettingsRun::tryFault(const Scene& scene, int call, bool isLasting) {
    FaultyStore::reset();
    prepare(scene);
    FaultyStore::failAt(call, isLasting);
    const bool isReported = write(scene, bytesAfter(scene));
    FaultyStore::reset();
    examine(scene, isReported, "call " + QByteArray::number(call) + (isLasting ? " and all later ones" : ""));
    m_report.count("faults in the settings store");
}

void SettingsRun::examine(const Scene& scene, bool isReported, const QByteArray& what) {
    int oldOnes = 0;
    int newOnes = 0;
    SqliteRegistry store(this->store());
    for (int i = 0; i < scene.values; ++i) {
        RegistryValue value;
        const int code = store.readValue(Root, key(), QString::number(i), value);
        const bool isMissing = code == RegistryCode::NotFound && !scene.hasStore;
        oldOnes +=
            isMissing || (code == RegistryCode::Ok && scene.hasStore && value.data == bytesBefore(scene)) ? 1 : 0;
        newOnes += code == RegistryCode::Ok && value.data == bytesAfter(scene) ? 1 : 0;
    }
    if (newOnes != scene.values && (isReported || oldOnes != scene.values))
        m_report.fault(scene.name, what + (isReported ? ": reported as written, and is not" : ": neither old nor new"));
    if (writeValue(store, 0, "and on") != RegistryCode::Ok)
        m_report.fault(scene.name, what + ": nothing more can be written");
    for (const QByteArray& name : namesIn(m_root + "/settings")) {
        if (name.contains("damaged"))
            m_report.fault(scene.name, what + ": the store was taken for a damaged one");
    }
}
