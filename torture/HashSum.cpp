#include "HashSum.h"

#include <xxhash.h>

namespace {

/// Whether all folders above the name are there; those that the disk does not know are.
bool isReachable(const WeakDisk::State& state, const QByteArray& name) {
    for (qsizetype end = name.lastIndexOf('/'); end > 0; end = name.lastIndexOf('/', end - 1)) {
        const auto folder = state.names.find(name.left(end));
        if (folder != state.names.end() && folder->second == WeakDisk::NoFile)
            return false;
    }
    return true;
}

std::uint64_t hash(const WeakDisk::State& state, bool withTimes) {
    HashSum sum;
    for (const auto& [name, file] : state.names) {
        if (file == WeakDisk::NoFile || !isReachable(state, name))
            continue;
        sum.add(name);
        sum.add(std::uint64_t(file == WeakDisk::Folder));
        if (file == WeakDisk::Folder)
            continue;
        sum.add(state.files[static_cast<std::size_t>(file)]);
        if (withTimes)
            sum.add(std::uint64_t(state.times[static_cast<std::size_t>(file)]));
    }
    return sum.value();
}

}  // namespace

HashSum::HashSum() : m_state(XXH3_createState(), [](XXH3_state_s* state) { XXH3_freeState(state); }) {
    XXH3_64bits_reset(m_state.get());
}

void HashSum::add(const QByteArray& bytes) {
    add(std::uint64_t(bytes.size()));
    XXH3_64bits_update(m_state.get(), bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void HashSum::add(std::uint64_t number) {
    XXH3_64bits_update(m_state.get(), &number, sizeof number);
}

std::uint64_t HashSum::value() const {
    return XXH3_64bits_digest(m_state.get());
}

std::uint64_t hashOf(const WeakDisk::State& state) {
    return hash(state, false);
}

std::uint64_t hashWithTimes(const WeakDisk::State& state) {
    return hash(state, true);
}
