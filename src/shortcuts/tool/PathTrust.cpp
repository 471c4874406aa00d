#include "PathTrust.h"

#include <cerrno>
#include <cstring>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A group that holds its owner alone, as systems with a umask of 002 give every user: writing
// through it is writing as the owner.
bool isPrivateGroup(gid_t gid, uid_t owner)
{
    const passwd* ownerAccount = getpwuid(owner);
    if (!ownerAccount)
        return false;
    const std::string ownerName = ownerAccount->pw_name;
    const bool isOwnersPrimaryGroup = ownerAccount->pw_gid == gid;
    const group* entry = getgrgid(gid);
    if (!entry)
        return false;
    for (char** member = entry->gr_mem; *member; ++member) {
        if (ownerName != *member)
            return false;
    }
    if (!isOwnersPrimaryGroup && !entry->gr_mem[0])
        return false;
    bool alone = true;
    setpwent();
    while (const passwd* account = getpwent()) {
        if (account->pw_gid == gid && account->pw_uid != owner) {
            alone = false;
            break;
        }
    }
    endpwent();
    return alone;
}

bool othersCanWrite(const struct stat& info)
{
    if (info.st_mode & S_IWOTH)
        return true;
    return (info.st_mode & S_IWGRP) && !isPrivateGroup(info.st_gid, info.st_uid);
}

} // namespace

Trust checkTrust(const std::string& resolvedPath, bool rootMayOwnLeaf, std::string& reason)
{
    const uid_t user = getuid();
    std::string current = resolvedPath;
    bool leaf = true;
    while (true) {
        struct stat info;
        if (stat(current.c_str(), &info) != 0) {
            reason = current + ": " + std::strerror(errno);
            return Trust::Unreadable;
        }
        const bool owned = info.st_uid == user || ((!leaf || rootMayOwnLeaf) && info.st_uid == 0);
        if (!owned) {
            reason = current + " is not owned by you";
            return Trust::Untrusted;
        }
        if (othersCanWrite(info) && (leaf || !(info.st_mode & S_ISVTX))) {
            reason = current + " can be changed by other users";
            return Trust::Untrusted;
        }
        if (current == "/")
            return Trust::Trusted;
        const std::size_t slash = current.rfind('/');
        current = slash == 0 ? "/" : current.substr(0, slash);
        leaf = false;
    }
}
