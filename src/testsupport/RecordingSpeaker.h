// A Speaker that makes no sound: it writes down what it was asked to do, and
// can stand for a computer on which no voice can be heard.
#pragma once

#include "speech/Speaker.h"

#include <string>
#include <utility>
#include <vector>

class RecordingSpeaker : public Speaker {
public:
    // With a reason, the speaker cannot be heard and says why.
    explicit RecordingSpeaker(std::string unavailableReason = {})
        : m_unavailableReason(std::move(unavailableReason))
    {
    }

    // "say: <text>" and "stop", in the order they were asked for.
    const std::vector<std::string> &log() const { return m_log; }
    void clearLog() { m_log.clear(); }

    void say(const std::string &text) override { m_log.push_back("say: " + text); }
    void stop() override { m_log.push_back("stop"); }
    std::string unavailableReason() const override { return m_unavailableReason; }

private:
    std::string m_unavailableReason;
    std::vector<std::string> m_log;
};
