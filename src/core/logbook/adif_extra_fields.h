// The ExtraFields text of a contact: the ADIF fields that have no column of their own, kept as
// ADIF ("<submode:3>USB <my_rig:7>IC-7300"), names in small letters, lengths in bytes.
//
// The importer appends to it and the "All fields" export writes it back, so that importing a
// file and exporting it again loses nothing. Pure functions; any thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tavlorin {

// Appends one field; an empty value is not kept.
void AppendExtraField(std::string* extras, std::string_view name, std::string_view type,
                      std::string_view value);

// Calls `each` with every field of `extras` in order. Text that is not a field is skipped
// (the column may have been edited by hand).
void ForEachExtraField(
    std::string_view extras,
    const std::function<void(std::string_view name, std::string_view type, std::string_view value)>&
        each);

// The value of the first field named `name` (small letters), or empty.
std::string_view FindExtraField(std::string_view extras, std::string_view name);

}  // namespace tavlorin
