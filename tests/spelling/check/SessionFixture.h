#pragma once

#include "spelling/check/SpellingSession.h"
#include "spelling/words/OwnWords.h"
#include "support/DictionaryFolder.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <memory>

/// A check of a text by a small dictionary.
class SessionFixture : public testing::Test {
 protected:
    using State = SpellingSession::State;

    static constexpr qint64 Patience = 60'000;

    /// Until there is something to decide, or the end.
    State runOn() {
        QElapsedTimer taken;
        taken.start();
        while (m_session->hasWork() && !taken.hasExpired(Patience))
            m_session->step(std::chrono::milliseconds(20));
        return m_session->state();
    }
    State begin(const QString& text) {
        m_session = std::make_unique<SpellingSession>(text, m_own);
        m_session->setDictionary(m_dictionary);
        return runOn();
    }
    /// All mistakes to the end, each left as it is.
    QStringList mistakes() {
        QStringList found;
        while (runOn() == State::AtMistake) {
            found << m_session->word();
            m_session->ignore();
        }
        EXPECT_EQ(m_session->state(), State::Finished) << m_session->error().toStdString();
        return found;
    }

    DictionaryFolder m_folder;
    Dictionary m_dictionary = m_folder.make(u"en"_qs, "the\ncat\nsat\non\nmat\nsmith\nnaive\nand");
    OwnWords m_own{m_folder.path(u"words.txt"_qs)};
    std::unique_ptr<SpellingSession> m_session;
};
