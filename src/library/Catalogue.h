#pragma once

#include "platform/Result.h"

#include <string>
#include <vector>

namespace zv {

/// The names of the libraries that a profile file lists, in the order of their keys. An absent or negative
/// count is an empty catalogue, a missing name an empty one; at most 32,767 names are read.
std::vector<std::string> readCatalogue(const std::string& profileFile);
/// The same for a window that will write the catalogue from what it reads. Errors: Denied, Failed: the
/// profile is there, and what it holds is not known.
Result<std::vector<std::string>> tryCatalogue(const std::string& profileFile);

/// The stored count of libraries, -1 when there is none. Errors: Denied, Failed: as tryCatalogue().
Result<int> libraryCount(const std::string& profileFile);

/// The name of the library of `number`, from 1; empty when there is none.
std::string libraryName(const std::string& profileFile, int number);

// A change of the catalogue is made of these steps, in this order; the editor does its own between them. In
// each `masterFolder` holds the master profile.

/// Writes the names to the scratch file "$liblist.tmp", then replaces the whole catalogue by `count` and the
/// names in one step. The count is written as given, whether or not it is that of the names. Errors: Denied,
/// Failed, when the scratch file cannot be written; the catalogue is then as it was. A profile that cannot be
/// written stays as it was without an error.
Result<void> writeCatalogue(const std::string& masterFolder, const std::vector<std::string>& names,
                            int count);
/// Deletes the scratch file if it is there. Errors: Denied, Failed.
Result<void> removeCatalogueScratch(const std::string& masterFolder);
/// Notes in the master profile that the catalogue has changed.
void markCatalogueChanged(const std::string& masterFolder);

} // namespace zv
