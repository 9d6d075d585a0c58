#pragma once

#include "Report.h"
#include "Scene.h"
#include "platform/FileSystemCalls.h"
#include "platform/WriteWitness.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <vector>

/// The files of a scene in a folder of their own: made, saved, and examined. Owned by the code that tries the scene.
class SceneFiles {
 public:
    /// `root`: an empty folder for the files and the records, by its real path.
    SceneFiles(QByteArray root, const Scene& scene);

    QString recordFolder() const { return QString::fromLocal8Bit(m_root) + u"/state/saves"_qs; }
    /// False: the file system has no such extras, so the scene cannot be tried here.
    bool prepare();
    void save(FileSystemCalls& calls, WriteWitness& witness);
    /// Reports everything that is not as promised, after recovery. `what` names the trial.
    void examine(Report& report, const QByteArray& what) const;

 private:
    struct State {
        ino_t inode = 0;
        nlink_t links = 0;
        mode_t mode = 0;
        uid_t owner = 0;
        gid_t group = 0;
        std::map<QByteArray, QByteArray> attributes;

        bool operator==(const State&) const = default;
    };
    struct File {
        QByteArray name;    ///< under which it is saved
        QByteArray target;  ///< where its bytes are
        QByteArray oldBytes;
        QByteArray newBytes;
        State state;
        bool isReported = false;  ///< the save said that it is done
    };

    static State stateOf(const QByteArray& name);
    static bool isAsBefore(const File& file);
    bool prepareFile(File& file) const;
    bool addExtra(const File& file) const;
    void replaceAgain(const File& file) const;
    void saveFile(File& file, FileSystemCalls& calls, WriteWitness& witness) const;
    QByteArray faultOf(const File& file) const;
    bool isKeptOfTornFile(const QByteArray& record) const;
    QByteArray newContents(const File& file) const;
    std::vector<QByteArray> expectedNames() const;

    QByteArray m_root;
    const Scene& m_scene;
    std::vector<File> m_files;
};

/// The names in a folder, sorted; empty when it is missing.
std::vector<QByteArray> namesIn(const QByteArray& folder);
/// Deletes all that is in the folder, and makes it if it is missing.
void emptyFolder(const QByteArray& folder);
