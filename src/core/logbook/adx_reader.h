// The reader of ADIF's XML form (".adx"): the same AdifDocument as the tagged-text reader.
//
// <ADX><HEADER>…</HEADER><RECORDS><RECORD><CALL>…</CALL>…</RECORD>…</RECORDS></ADX>; element
// names in any case; application fields <APP PROGRAMID="X" FIELDNAME="Y" TYPE="S"> become the
// field "app_x_y", user fields <USERDEF FIELDNAME="Y"> the field "y". The XML is parsed by
// expat; a document that is not well-formed XML fails with the parser's message and line.
//
// Pure function; any thread.
#pragma once

#include <string>
#include <string_view>

#include "logbook/adif_document.h"
#include "logbook/adif_reader.h"
#include "shell/status.h"

namespace tavlorin {

Status ReadAdx(std::string_view xml, AdifDocument* document, const ReadProgress& progress = {});

// True when `bytes` look like the XML form (an XML declaration or an <ADX> element first).
bool LooksLikeAdx(std::string_view bytes);

}  // namespace tavlorin
