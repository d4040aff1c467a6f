// Owner, permissions and access list of a file that takes the place of another.
#pragma once

#include <sys/stat.h>

#include <string>

// Gives the open file, which only its owner can open so far, the owner and the permissions of the
// file at `path`, whose status is `before`. What the system does not permit is left out: then fewer
// people can open the file, never more. The set-user-ID and set-group-ID bits are left out too,
// because the content is different.
void TakeOverAccess(int descriptor, const std::string& path, const struct stat& before);
