#include "core/FileError.h"

std::string FileError::message() const
{
    std::string text;
    switch (kind) {
    case Kind::Unreadable:
        text = "The file \"" + path + "\" could not be read: " + cause + ".";
        break;
    case Kind::Damaged:
        text = "The file \"" + path + "\" is damaged";
        if (offset) {
            text += " at byte " + std::to_string(*offset);
        }
        text += ": " + cause + ".";
        break;
    case Kind::Unwritable:
        text = "The file \"" + path + "\" could not be saved: " + cause +
               ". Any earlier copy of the file is unchanged.";
        break;
    case Kind::TooLong:
        text = "The file \"" + path + "\" was not saved: " + cause + ".";
        break;
    }
    return text;
}
