#pragma once

#include "widgets/Prompts.h"

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>
#include <utility>
#include <variant>

/// Answers the program's questions from a queue and records what was shown. The test fails if a question finds no
/// answer, or one of another kind, and if answers are left when the object is destroyed. Messages need no answer. Shows
/// nothing and does not run the event loop.
class ScriptedPrompts : public Prompts {
 public:
    ScriptedPrompts() = default;
    ~ScriptedPrompts() override {
        EXPECT_TRUE(m_answers.empty()) << m_answers.size() << " answers were never asked for";
    }
    Q_DISABLE_COPY_MOVE(ScriptedPrompts)

    void answerYes() { m_answers.emplace_back(true); }
    void answerNo() { m_answers.emplace_back(false); }
    void answerFiles(const OpenAnswer& answer) { m_answers.emplace_back(answer); }
    /// An empty path means that the save dialog is cancelled.
    void answerSavePath(const QString& path) { m_answers.emplace_back(path); }

    /// An empty path means that the dialog is cancelled.
    void answerFolder(const QString& path) { m_answers.emplace_back(path); }

    void answerText(const QString& text) { m_answers.emplace_back(TypedText{text}); }
    void cancelText() { m_answers.emplace_back(TypedText{}); }

    /// Runs once, during the next message or question.
    void whileShown(std::function<void()> action) { m_whileShown = std::move(action); }

    QStringList messages;  ///< texts of the message boxes
    QStringList stops;     ///< those of them that have the picture of a stop
    QStringList checks;    ///< captions of the check boxes in them
    bool ticks = false;    ///< whether these are ticked
    QStringList questions;
    QList<Answer> presets;  ///< what Enter gives, of each question                 ///< texts of the Yes/No boxes
    QStringList informativeTexts;          ///< of the Yes/No boxes, empty where there is none
    QStringList titles;                    ///< titles of boxes of both kinds, in the order they were shown
    std::deque<FileQuestion> fileDialogs;  ///< the question of each file dialog
    QStringList folderDialogs;             ///< titles of the dialogs for a folder
    QStringList textBoxes;                 ///< title, prompt and initial text of each box for a text, with tabs between

    void message(QWidget*, const QString& text, const QString& title) override {
        messages.append(text);
        titles.append(title);
        runAction();
    }

    void stop(QWidget* parent, const QString& text, const QString& title) override {
        stops.append(text);
        message(parent, text, title);
    }

    bool messageWithCheck(QWidget* parent, const QString& text, const QString& check) override {
        checks.append(check);
        message(parent, text, {});
        return ticks;
    }

    bool askYesNo(QWidget*, const QString& text, const QString& title, const QString& informativeText,
                  Answer preset) override {
        presets.append(preset);
        questions.append(text);
        informativeTexts.append(informativeText);
        titles.append(title);
        runAction();
        return next<bool>(text);
    }

    OpenAnswer askFilesToOpen(QWidget*, const FileQuestion& question) override {
        fileDialogs.push_back(question);
        runAction();
        return next<OpenAnswer>(question.title);
    }

    QString askFileToSave(QWidget*, const FileQuestion& question) override {
        fileDialogs.push_back(question);
        runAction();
        return next<QString>(question.title);
    }

    QString askFolder(QWidget*, const QString& title) override {
        folderDialogs.append(title);
        runAction();
        return next<QString>(title);
    }

    std::optional<QString> askText(QWidget*, const QString& title, const QString& prompt,
                                   const QString& initial) override {
        textBoxes.append(QStringList{title, prompt, initial}.join(u'\t'));
        runAction();
        return next<TypedText>(prompt).text;
    }

 private:
    struct TypedText {
        std::optional<QString> text;  ///< nothing: cancelled
    };

    template <typename Answer>
    Answer next(const QString& asked) {
        if (m_answers.empty() || !std::holds_alternative<Answer>(m_answers.front())) {
            ADD_FAILURE() << "unexpected question: " << asked.toStdString();
            return {};
        }
        Answer answer = std::get<Answer>(m_answers.front());
        m_answers.pop_front();
        return answer;
    }

    void runAction() {
        if (auto action = std::exchange(m_whileShown, nullptr))
            action();
    }

    std::deque<std::variant<bool, OpenAnswer, QString, TypedText>> m_answers;
    std::function<void()> m_whileShown;
};
