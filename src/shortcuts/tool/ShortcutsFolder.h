#pragma once

#include <optional>
#include <string>
#include <vector>

// The user's shortcuts: the executable files in $XDG_CONFIG_HOME/Obrinta/shortcuts/. A file or
// folder that other users could change (see PathTrust.h) is neither listed nor run.
class ShortcutsFolder
{
public:
    ShortcutsFolder();

    const std::string& path() const { return m_path; }

    struct Problem
    {
        enum Kind
        {
            None,
            Missing,
            NotShortcut,
            Untrusted,
            Unreadable
        };
        Kind kind = None;
        std::string reason;

        explicit operator bool() const { return kind != None; }
    };

    // Whether the folder itself can be used.
    Problem check() const;

    struct Entry
    {
        std::string name;
        std::string path;
    };
    // The shortcuts in name order. A file that looks meant as a shortcut but cannot be one (an
    // untrusted file, a name that does not fit on one line of text) adds a warning.
    std::vector<Entry> list(std::vector<std::string>& warnings) const;
    // The shortcut called `name`; the folder must have passed `check()`.
    Entry find(const std::string& name, Problem& problem) const;

    // A name never leaves the folder and fits on one line of UTF-8 text.
    static bool isValidName(const std::string& name);

private:
    Problem checkFile(const std::string& name) const;

    std::string m_path;
};
