#pragma once

#include "Effort.h"
#include "Report.h"
#include "program/Manuscript.h"
#include "program/Operator.h"
#include "program/ProgramOptions.h"
#include "program/ReplacedFiles.h"

#include <QByteArray>

#include <unistd.h>

#include <chrono>
#include <memory>
#include <optional>
#include <random>
#include <vector>

class FileWatch;
class FolderWatch;

/// Somebody at a desk of their own who works with the program until it is killed, again and again: each round starts
/// it, judges what the kill before has left, does one thing, and kills it at a random moment. Used by one thread.
class Desk {
 public:
    Desk(int number, QByteArray root, const ProgramOptions& options, const Effort& effort, unsigned seed,
         Report& report);

    void run();

    /// What must have been hit at least once, and the act that does.
    struct Hit {
        const char* name;
        const char* act;
    };
    static constexpr const char* TornSaves = "kills that left a file half-saved";
    static constexpr const char* TornReplacements = "kills that left a file half-replaced";
    static constexpr Hit Hits[] = {{"kills that hit a save", "saving"},
                                   {"kills that hit a replacement", "replacing in files"},
                                   {TornSaves, "tearing a save"},
                                   {TornReplacements, "tearing a replacement"},
                                   {"kills that hit typing", "typing"},
                                   {"kills while closing", "closing with Yes"},
                                   {"kills while starting", "starting again"},
                                   {"kills that hit a recovery", "starting again"}};

 private:
    /// Which file is opened for certain: one whose save takes long; one that is shown as bytes, where there is any; one
    /// that an interrupted save leaves half-written.
    enum class Opens { Any, Large, Bytes, Torn };
    /// One thing that is done in a round.
    struct Act {
        const char* name;
        unsigned weight;
        Opens opens;
        void (Desk::*play)();
    };
    static const Act Acts[];
    /// Save As writes to one of so many files.
    static constexpr unsigned CopyNames = 3;
    /// InTheMiddle: from the record of the save on; InTheFile: when the bytes of the file change.
    enum class Moment { AtRandom, InTheMiddle, InTheFile, WhenDone };

    // Rounds
    void layOut();
    void playRound(bool isLast);
    const Act& choose();
    /// Whether this round belongs to the run; whether it is played.
    bool isDue() const;
    bool goesOn();
    void breakOff(const QByteArray& what);
    void note(const QByteArray& what);

    // Start and judgement (DeskJudgement.cpp)
    void open(const Act& act);
    void countTorn();
    void judgeFiles();
    void judgeLeftovers();
    void judgeReplaced();
    void judgeAsides();
    void judgeTexts();
    bool judgeText(Manuscript& text);
    void judgeUntitled();
    void judgeCopy();
    void saveAndWait(const QByteArray& path);
    bool isSaveUnderWay() const;

    // Acts (DeskActs.cpp)
    void typeAndStop();
    void typeAndPause();
    void save();
    void saveOfTwo();
    void tearSave();
    void saveAs();
    void replaceInFiles();
    void tearReplacement();
    void replaceUntil(Moment moment);
    void closeWithYes();
    void closeWithNo();
    void typeUntitled();
    void endInOrder();
    void startAgain();
    void killStarting();
    // Acts with bytes (HexActs.cpp)
    void undoBytes();
    void fillBytes();
    void switchToText();
    Manuscript* showBytes();
    void typeBytes(Manuscript& bytes);
    void undo(Manuscript& bytes, int steps);
    void saveAndSwitch(Manuscript& bytes);
    void judgeUndo(Manuscript& bytes);
    // What acts have in common
    Manuscript& show(std::size_t opened);
    void type(Manuscript& text, int keys, unsigned mostGapMs);
    void finishByte(Manuscript& text);
    void saveText(Manuscript& text) { saveTextUntil(text, chooseMoment()); }
    void saveTextUntil(Manuscript& text, Moment moment);
    Manuscript& close();
    void killClosing();
    void endClosing();
    Moment chooseMoment();
    bool awaitMoment(Moment moment, const FolderWatch& watch, const FileWatch& file, unsigned mostUs);
    void pause(unsigned mostUs);
    void sleep(std::chrono::microseconds time);
    Manuscript::Kill lastKill() const;
    void pauseForJournal();
    void kill(const char* what);
    void countHits();
    bool isTyping() const;

    unsigned random(unsigned below) { return static_cast<unsigned>(m_random() % below); }
    /// All others look at the first bytes of a file, and show UTF-16 and much else as bytes. Here no file is.
    bool showsTextsOnly() const { return m_number % 2 == 1; }
    void writeSettings() const;
    static QByteArray copyName(unsigned number) { return "copy" + QByteArray::number(number); }
    QByteArray saves() const { return m_folder + "/home/state/quillmark/saves"; }
    QByteArray journals() const { return m_folder + "/home/state/quillmark/recovery"; }
    QByteArray workingCopies() const { return m_folder + "/home/tmp/quillmark-" + QByteArray::number(::getuid()); }
    QByteArray files() const { return m_folder + "/files"; }

    /// Null: none of this kind is needed.
    Manuscript* chooseOf(Opens opens);
    const Hit* missingHit() const;

    const int m_number;
    const QByteArray m_root;
    const ProgramOptions& m_options;
    const Effort& m_effort;
    const unsigned m_seed;
    Report& m_report;
    std::mt19937 m_random;
    Operator m_operator;

    QByteArray m_folder;
    int m_layouts = 0;
    int m_round = 0;
    int m_extraRounds = 0;
    Manuscript::Clock::time_point m_roundBegin;
    const char* m_act = "";           ///< that was played last
    std::vector<QByteArray> m_story;  ///< of the last two rounds
    std::vector<std::unique_ptr<Manuscript>> m_manuscripts;
    std::vector<Manuscript*> m_opened;  ///< that are shown, or come back
    std::vector<QByteArray> m_named;    ///< with which the program was started
    std::unique_ptr<ReplacedFiles> m_replaced;
    bool m_wasReplacing = false;
    bool m_isBehind = false;  ///< a copy or a replaced file is what it was before the kill
    bool m_wasReplaceDone = false;
    bool m_hasHitReplacement = false;        ///< a record of it was left
    std::unique_ptr<Manuscript> m_untitled;  ///< typed before the last kill
    QByteArray m_copy;                       ///< to which the last Save As wrote
    std::optional<QByteArray> m_copyBefore;
    QByteArray m_copyAfter;
    Manuscript* m_copied = nullptr;
    bool m_wasCopyDone = false;
    Manuscript::Clock::time_point m_killed;
    std::optional<Manuscript::Clock::duration> m_journalPause;  ///< after which the journal was seen to be written
    Manuscript::Clock::duration m_late{};                       ///< what the sleeps before the last kill took too long
    bool m_hadJournals = false;
    bool m_isClosing = false;             ///< the program may end by itself
    std::vector<QByteArray> m_abandoned;  ///< working copies that killed programs have left
};
