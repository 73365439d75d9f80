#include "core/FileError.h"

#include "core/ByteIO.h"

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

FileError refusedSave(const std::filesystem::path &path, const std::string &what,
                      const std::string &problem)
{
    return FileError{FileError::Kind::Unwritable,
                     path.u8string(),
                     what + " in memory is inconsistent: " + problem,
                     {}};
}

FileError tooLongText(const std::filesystem::path &path, const std::string &which)
{
    return FileError{FileError::Kind::TooLong,
                     path.u8string(),
                     which + " is longer than " + std::to_string(MaxTextBytes) + " bytes",
                     {}};
}
