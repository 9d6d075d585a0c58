#include "document/RecoveryFixture.h"

#include <QTest>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <cstddef>
#include <cstdlib>
#include <vector>

namespace {

/// The calls by which files are looked up, made, read and written by name, or waited for.
const std::vector<long> FileCalls{
#ifdef SYS_open
    SYS_open,      SYS_creat,           SYS_stat,       SYS_lstat,
    SYS_access,    SYS_readlink,        SYS_rename,     SYS_unlink,
    SYS_mkdir,     SYS_rmdir,           SYS_chmod,      SYS_link,
    SYS_symlink,
#endif
    SYS_openat,    SYS_openat2,         SYS_newfstatat, SYS_statx,
    SYS_faccessat, SYS_readlinkat,      SYS_renameat2,  SYS_unlinkat,
    SYS_mkdirat,   SYS_fchmodat,        SYS_linkat,     SYS_symlinkat,
    SYS_flock,     SYS_fsync,           SYS_fdatasync,  SYS_sync,
    SYS_syncfs,    SYS_ftruncate,       SYS_fallocate,  SYS_pread64,
    SYS_pwrite64,  SYS_copy_file_range, SYS_sendfile};

/// From now on such a call of this thread kills the process; threads that exist already are free.
bool forbidFileCalls() {
    std::vector<sock_filter> filter{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
    for (const long number : FileCalls) {
        filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(number), 0, 1));
        filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS));
    }
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

}  // namespace

/// What a journal costs the thread in which keys are typed.
class JournalCost : public RecoveryFixture {
 protected:
    JournalCost() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    [[noreturn]] void typeWithoutFileCalls() {
        // The thread of the journals, which exists from the first edit on, writes while the keys are typed.
        Journals::Limits limits;
        limits.afterLast = std::chrono::milliseconds(1);
        limits.whileEditing = std::chrono::milliseconds(5);
        Journals journals(folder(), FileSystemCalls::system(), limits);
        m_given.all.journals = &journals;
        frmDocument other(&m_host, m_given.all);
        documenttest::typeInto(*other.GetEditor()->focusProxy(), u"begins"_qs);
        newDocument();
        const bool isOpen = open(fileOf("some text\n"));
        QTest::qWait(50);
        if (!isOpen || !forbidFileCalls())
            std::_Exit(2);
        for (int i = 0; i < 500; ++i)
            documenttest::typeInto(*view().focusProxy(), u"a"_qs);
        document->Undo();
        document->Redo();
        const bool isWritten = journals.flush(std::chrono::minutes(1));
        std::_Exit(isWritten && view().Text().startsWith(u"aaa"_qs) ? 0 : 3);
    }
    [[noreturn]] static void openWhenForbidden() {
        if (!forbidFileCalls())
            std::_Exit(2);
        QFile(u"/"_qs).exists();
        std::_Exit(0);
    }
};

TEST_F(JournalCost, FileCallsOfTheThreadAreNoticedHere) {
    EXPECT_EXIT(openWhenForbidden(), testing::KilledBySignal(SIGSYS), "");
}

TEST_F(JournalCost, NoKeyCallsTheFileSystemInTheThreadOfTheWindow) {
    EXPECT_EXIT(typeWithoutFileCalls(), testing::ExitedWithCode(0), "");
}
