// The reader of ADIF's tagged-text form (".adi"): bytes in, an AdifDocument out.
//
// Tolerant of what real loggers write: a byte-order mark; a free-text header up to <EOH> in any
// case, or no header text at all (a file that starts with "<"); tags, EOH and EOR in any case;
// "<F:0>" and type indicators; anything between a value and the next "<"; lengths counted in
// bytes of UTF-8 or in characters (decided per field by what follows the value); Windows-1252
// values; tags without a length (<APP_LoTW_EOF>); a second <EOH>; a missing final <EOR>; and a
// length so long that it would swallow the next field, which is cut at that field's tag. Every
// repair is listed in the document's problems with its record number; nothing is dropped
// silently.
//
// Pure function; any thread.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "logbook/adif_document.h"
#include "shell/status.h"

namespace tavlorin {

// Called now and then with the bytes read so far and the total; returning false stops the
// reading (the Status is then "Cancelled").
using ReadProgress = std::function<bool(size_t done, size_t total)>;

// Reads `bytes` (taken over: values point into them) into `*document`. Fails only when the
// text is too big for the document (over 2 GB) or when `progress` cancels.
Status ReadAdif(std::string bytes, AdifDocument* document, const ReadProgress& progress = {});

}  // namespace tavlorin
