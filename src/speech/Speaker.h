// What the program speaks through: a voice that reads a text aloud without
// waiting for it to be heard. Tests put a recorder in its place.
#pragma once

#include <string>

class Speaker {
public:
    virtual ~Speaker() = default;

    // Starts reading text (UTF-8) aloud and returns at once; whatever was still
    // being read is cut off.
    virtual void say(const std::string &text) = 0;
    // Falls silent at once.
    virtual void stop() = 0;

    // Empty when this speaker can be heard; otherwise why not, in a sentence
    // for the teacher who wonders why reading aloud cannot be turned on.
    virtual std::string unavailableReason() const = 0;
    bool available() const { return unavailableReason().empty(); }
};
