// The options that choose and connect a radio, shared by the commands that talk to one
// (radio, emulate): --company, --model, --port, --speed, --address, --cts, --dtr, --rts,
// --switch-on.
#pragma once

#include <string>

#include "args.h"
#include "radio/cat_radio.h"

namespace tavlorin::cli {

// The help lines of those options, for a command's --help.
extern const char* const kRadioOptionsHelp;

// Reads the options into *params, filling what the model's definition implies (company,
// speed, CI-V address). On a mistake returns false with *error set.
bool ReadRadioOptions(ArgReader& args, ConnectParams* params, std::string* error);

// Connects `radio`, printing the outcome's message on standard error when it fails (with the
// advice about ports in use when the port could not be opened). Returns true on success.
bool ConnectRadio(CatRadio& radio, const ConnectParams& params, bool quiet);

}  // namespace tavlorin::cli
