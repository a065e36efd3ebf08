#pragma once
// Message boxes for tests: instead of a modal box, the message is written down, and a question
// gets the answer the test scripted. ScopedRecordingPresenter installs itself for its scope:
//
//     ScopedRecordingPresenter shown;
//     shown.ScriptAnswer(MessagePresenter::Answer::No);
//     ... code under test ...
//     EXPECT_EQ(shown.Last().text, "...");

#include "support/MessagePresenter.h"

#include <deque>
#include <vector>

class RecordingPresenter : public MessagePresenter {
public:
    // Answers for the next questions, in order. A question with none scripted gets the default
    // answer, Yes unless changed: the default button of a real box.
    void ScriptAnswer(Answer vAnswer) { scripted_.push_back(vAnswer); }
    void SetDefaultAnswer(Answer vAnswer) { defaultAnswer_ = vAnswer; }

    const std::vector<Message>& Shown() const { return shown_; }
    qsizetype Count() const { return static_cast<qsizetype>(shown_.size()); }
    // The last message, or an empty one when nothing was shown.
    Message Last() const { return shown_.empty() ? Message{} : shown_.back(); }
    void Clear() { shown_.clear(); }

    Answer Present(const Message& vMessage) override
    {
        shown_.push_back(vMessage);
        if (vMessage.buttons == Buttons::Ok)
            return Answer::Ok;
        if (scripted_.empty())
            return defaultAnswer_;
        const Answer answer = scripted_.front();
        scripted_.pop_front();
        return answer;
    }

private:
    std::vector<Message> shown_;
    std::deque<Answer> scripted_;
    Answer defaultAnswer_ = Answer::Yes;
};

class ScopedRecordingPresenter : public RecordingPresenter {
public:
    ScopedRecordingPresenter() = default;

private:
    ScopedPresenter guard_{*this};
};
