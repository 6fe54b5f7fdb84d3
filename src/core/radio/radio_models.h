// RadioModel: what the program knows of a model before connecting: its company, the family
// code it connects with, the command set it borrows, its speeds and (ICOM) its default CI-V
// address and frequency width.
//
// The models come from the radio definitions file "TVR Radio Definitions.txt" in the shipped
// data folder (SharedDataDir), read once on first use. FindRadioModel looks a model up by its
// exact name ("TS-2000", "K2: Demo"). The table is immutable once read; any thread may use it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavlorin {

struct RadioModel {
  std::string name;
  std::string company;              // as listed to the user ("ICOM", "Yaesu", ...)
  int manufacturer = 0;             // the family the model connects as (6 for demonstration models)
  std::string commandSet;           // the model whose commands it uses; empty: its own
  std::vector<std::string> speeds;  // the speed list offered, slowest first
  std::string defaultSpeed;
  std::string civAddress;     // hexadecimal, ICOM family only
  int civFrequencyBytes = 5;  // BCD bytes of a CI-V frequency (the IC-735 has 4)
};

inline constexpr const char* kRadioDefinitionsFile = "TVR Radio Definitions.txt";
inline constexpr const char* kRadioDefinitionNotFound = "Radio definition not found";

// nullptr when the model is not known (the caller shows kRadioDefinitionNotFound).
const RadioModel* FindRadioModel(std::string_view name);
std::span<const RadioModel> AllRadioModels();
// The models of one company, in file order (the connection setup's radio list).
std::vector<const RadioModel*> RadioModelsOfCompany(std::string_view company);

// The model whose command set `name` uses: its definition's commandSet, else the name itself.
std::string CommandSetOf(std::string_view name);
// The radio window's caption: the name, or "%s (%s commands)" for a model that borrows.
std::string RadioCaption(const RadioModel& model);

// Parses the lines of a definitions file. Comment lines ("#") and blank lines are skipped; a line
// that cannot be read is skipped and reported in *errors (when given) with its line number.
std::vector<RadioModel> ParseRadioDefinitions(std::string_view text,
                                              std::vector<std::string>* errors = nullptr);

}  // namespace tavlorin
