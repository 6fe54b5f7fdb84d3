#include "logbook/adx_reader.h"

#include <expat.h>

#include <memory>

#include "logbook/adif_text.h"

namespace tavlorin {
namespace {

// Where the parser is in the ADX tree.
struct AdxState {
  AdifDocument* doc = nullptr;
  int depth = 0;  // 1 ADX, 2 HEADER or RECORDS, 3 RECORD or header field, 4 record field
  bool inHeader = false;
  bool inRecord = false;
  bool inField = false;
  std::string name;
  std::string type;
  std::string value;
  size_t records = 0;
  const ReadProgress* progress = nullptr;
  size_t total = 0;
  XML_Parser parser = nullptr;
  bool cancelled = false;
};

std::string Attribute(const XML_Char** attributes, std::string_view name) {
  for (size_t i = 0; attributes[i] != nullptr; i += 2) {
    if (EqualsIgnoreCase(attributes[i], name)) {
      return attributes[i + 1];
    }
  }
  return {};
}

void XMLCALL Start(void* data, const XML_Char* element, const XML_Char** attributes) {
  auto* s = static_cast<AdxState*>(data);
  ++s->depth;
  const std::string_view name(element);
  if (s->depth == 2) {
    s->inHeader = EqualsIgnoreCase(name, "header");
    return;
  }
  if (s->depth == 3 && !s->inHeader) {
    s->inRecord = EqualsIgnoreCase(name, "record");
    return;
  }
  const bool fieldDepth = (s->inHeader && s->depth == 3) || (s->inRecord && s->depth == 4);
  if (!fieldDepth) {
    return;  // deeper elements are not ADIF; their text joins the field's value
  }
  s->inField = true;
  s->value.clear();
  s->type = Attribute(attributes, "type");
  if (EqualsIgnoreCase(name, "app")) {
    s->name = "app_" + Attribute(attributes, "programid") + "_" + Attribute(attributes, "fieldname");
  } else if (EqualsIgnoreCase(name, "userdef") && !s->inHeader) {
    s->name = Attribute(attributes, "fieldname");
    s->type.clear();
  } else if (EqualsIgnoreCase(name, "userdef")) {
    // A declaration: USERDEFn with the field's name as its value, as the tagged form has it.
    s->name = "userdef" + Attribute(attributes, "fieldid");
  } else {
    s->name = name;
    s->type.clear();  // the standard fields' types are fixed by their names
  }
}

void XMLCALL End(void* data, const XML_Char*) {
  auto* s = static_cast<AdxState*>(data);
  const bool fieldDepth = (s->inHeader && s->depth == 3) || (s->inRecord && s->depth == 4);
  if (fieldDepth && s->inField) {
    s->inField = false;
    if (!s->value.empty() && !s->name.empty()) {
      s->doc->AddFieldValue(s->name, s->type, s->value);
    }
  } else if (s->inHeader && s->depth == 2) {
    s->doc->EndHeader();
    s->inHeader = false;
  } else if (s->inRecord && s->depth == 3) {
    s->doc->EndRecord();
    s->inRecord = false;
    if (++s->records % 1024 == 0 && s->progress != nullptr && *s->progress &&
        !(*s->progress)(static_cast<size_t>(XML_GetCurrentByteIndex(s->parser)), s->total)) {
      s->cancelled = true;
      XML_StopParser(s->parser, XML_FALSE);
    }
  }
  --s->depth;
}

void XMLCALL Text(void* data, const XML_Char* text, int length) {
  auto* s = static_cast<AdxState*>(data);
  if (s->inField) {
    s->value.append(text, static_cast<size_t>(length));
  }
}

}  // namespace

bool LooksLikeAdx(std::string_view bytes) {
  if (bytes.substr(0, 3) == "\xEF\xBB\xBF") {
    bytes.remove_prefix(3);
  }
  bytes = TrimBlanks(bytes.substr(0, 256));
  return EqualsIgnoreCase(bytes.substr(0, 5), "<?xml") || EqualsIgnoreCase(bytes.substr(0, 4), "<adx");
}

Status ReadAdx(std::string_view xml, AdifDocument* document, const ReadProgress& progress) {
  *document = AdifDocument();
  std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate(nullptr),
                                                                      &XML_ParserFree);
  if (!parser) {
    return Status::Error("Out of memory for the XML parser");
  }
  AdxState state;
  state.doc = document;
  state.progress = &progress;
  state.total = xml.size();
  state.parser = parser.get();
  XML_SetUserData(parser.get(), &state);
  XML_SetElementHandler(parser.get(), &Start, &End);
  XML_SetCharacterDataHandler(parser.get(), &Text);
  // expat takes at most INT_MAX bytes a call.
  constexpr size_t kPiece = 1 << 24;
  for (size_t at = 0; at <= xml.size(); at += kPiece) {
    const size_t n = std::min(kPiece, xml.size() - at);
    const bool last = at + n >= xml.size();
    if (XML_Parse(parser.get(), xml.data() + at, static_cast<int>(n), last ? 1 : 0) ==
        XML_STATUS_ERROR) {
      if (state.cancelled) {
        *document = AdifDocument();
        return Status::Error("Cancelled");
      }
      const std::string message = std::string("The ADX file is not well-formed XML: ") +
                                  XML_ErrorString(XML_GetErrorCode(parser.get())) + " (line " +
                                  std::to_string(XML_GetCurrentLineNumber(parser.get())) + ")";
      *document = AdifDocument();
      return Status::Error(message);
    }
    if (last) {
      break;
    }
  }
  return Status::Ok();
}

}  // namespace tavlorin
