#pragma once

#include <string>

// Whether other users could change what a resolved path names, the way ssh judges its key files.
enum class Trust
{
    Trusted,
    Untrusted,
    Unreadable
};

// The leaf must belong to the user (or to root, where `rootMayOwnLeaf`) and be writable by them
// alone; every folder above it must belong to the user or root and be writable by nobody else,
// unless it is sticky like /tmp, where others cannot replace entries they do not own. `reason`
// says why a path is not trusted.
Trust checkTrust(const std::string& resolvedPath, bool rootMayOwnLeaf, std::string& reason);
