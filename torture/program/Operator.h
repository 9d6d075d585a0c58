#pragma once

#include "program/Desktop.h"
#include "program/RunningProgram.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// A promise that was broken, or a step that did not come about: thrown by the acts, caught by the desk.
struct Broken {
    QByteArray what;
};

/// Somebody who starts the program on a desktop of their own, presses its keys and looks at its windows. Waits for what
/// must come, and throws Broken when it does not.
class Operator {
 public:
    /// `patience`: the longest time to wait for anything, in milliseconds.
    Operator(std::string program, int patience) : m_program(std::move(program)), m_patience(patience) {}

    /// With a home in this folder, which is private to it. Returns when the files are shown.
    void start(const QByteArray& home, const std::vector<QByteArray>& files);
    /// Returns at once.
    void beginStart(const QByteArray& home, const std::vector<QByteArray>& files);
    bool isRunning() { return m_running != nullptr && !m_running->hasEnded(); }
    /// False: the program had ended.
    bool kill() { return m_running->kill(); }
    /// Until the program has ended by itself, which must be without a fault.
    void waitForEnd();

    void press(const std::string& chord) const { m_desktop.keyboard().press(chord); }
    void type(const QByteArray& text) const { m_desktop.keyboard().type(text.toStdString()); }
    /// Until the program has nothing to do, but not for long: a key that comes while it works is only late.
    void settle() { m_running->settle(ShortRestMs, m_patience / RestParts); }
    /// The same, and until nothing comes by a timer either.
    void settleWell() { m_running->settle(LongRestMs, m_patience / RestParts); }

    /// Of the frame, with a document of this name.
    static std::string frameTitle(const QByteArray& document) { return "Quillmark - [" + document.toStdString() + "]"; }
    /// Of a question or message.
    static std::string boxTitle() { return "Quillmark"; }
    int count(const std::string& title) const;
    void waitForWindow(const std::string& title, int count = 1);
    /// Whether it came true.
    bool waitUntil(const std::function<bool()>& isTrue, int milliseconds);
    bool waitUntil(const std::function<bool()>& isTrue) { return waitUntil(isTrue, m_patience); }
    /// The name of the active document.
    QByteArray activeDocument() const;
    /// Whether it came true before the program had nothing more to do.
    bool waitWhileBusy(const std::function<bool()>& isTrue, int milliseconds);
    /// Shows the document for which this is true; false: there is none among so many.
    bool activate(const std::function<bool(const QByteArray& name)>& isWanted, int documents);
    /// Leaves a picture of the screen in this file; nothing without the program `import`.
    void takePicture(const std::string& file) const;
    /// The frame alone is there.
    void expectNoBox() const;

 private:
    static constexpr int RestParts = 15;
    static constexpr int ShortRestMs = 25;
    static constexpr int LongRestMs = 120;

    bool activateOnce(const std::function<bool(const QByteArray& name)>& isWanted, int documents);

    std::string m_program;
    int m_patience;
    Desktop m_desktop;
    std::unique_ptr<RunningProgram> m_running;
};
