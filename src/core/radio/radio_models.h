// RadioModel: what the program knows of a model before connecting: its company, the family
// code it connects with, the command set it borrows, its speeds, (ICOM) its default CI-V
// address and frequency width, and its quirks as named properties (radio_model_properties.h).
//
// The models come from the radio definitions file "TVR Radio Definitions.txt": the user's copy
// in the data folder (DataDir) when there is one, else the shipped one (SharedDataDir), read
// once on first use. A model that borrows another's command set (or a demonstration model,
// which names the model it imitates there) inherits that model's properties unless its own
// line sets them. FindRadioModel looks a model up by its exact name ("TS-2000", "K2: Demo").
// The table is immutable once read; any thread may use it.
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavlorin {

struct RadioModel {
  std::string name;
  std::string company;              // as listed to the user ("ICOM", "Yaesu", ...)
  int manufacturer = 0;             // the family the model connects as (6 for demonstration models)
  std::string commandSet;           // the model whose commands it uses (a demonstration model:
                                    // the model it imitates); empty: its own
  std::vector<std::string> speeds;  // the speed list offered, slowest first
  std::string defaultSpeed;
  std::string civAddress;     // hexadecimal, ICOM family only
  int civFrequencyBytes = 5;  // BCD bytes of a CI-V frequency (the IC-735 has 4, the IC-905 6)
  // Quirks: property name to value ("" for a flag). Names and values are checked by the reader
  // against the vocabulary of radio_model_properties.h.
  std::map<std::string, std::string, std::less<>> properties;

  bool Has(std::string_view property) const { return properties.count(property) != 0; }
  // The property's value, or `fallback` when the model does not set it.
  std::string_view Property(std::string_view property, std::string_view fallback = {}) const;
  // A numeric property (decimal, or hexadecimal for the byte-valued ones); `fallback` when
  // absent. The reader has checked the value, so a present one always converts.
  int Number(std::string_view property, int fallback) const;
};

inline constexpr const char* kRadioDefinitionsFile = "TVR Radio Definitions.txt";
inline constexpr const char* kRadioDefinitionNotFound = "Radio definition not found";

// nullptr when the model is not known (the caller shows kRadioDefinitionNotFound).
const RadioModel* FindRadioModel(std::string_view name);
// The definition of `name`, or an empty one (no properties, 5 frequency bytes) for a model the
// definitions do not list (a radio connected with an explicit company).
const RadioModel& RadioModelOrDefault(std::string_view name);
std::span<const RadioModel> AllRadioModels();
// The models of one company, in file order (the connection setup's radio list).
std::vector<const RadioModel*> RadioModelsOfCompany(std::string_view company);

// The model whose command set `name` uses: its definition's commandSet, else the name itself.
std::string CommandSetOf(std::string_view name);
// The radio window's caption: the name, or "%s (%s commands)" for a model that borrows.
std::string RadioCaption(const RadioModel& model);
// The family a demonstration model answers as: that of the model it imitates (Kenwood when
// it names none). For any other model its own family.
int ResolvedFamily(const RadioModel& model);

// Parses the lines of a definitions file. Comment lines ("#") and blank lines are skipped; a line
// that cannot be read is skipped and reported in *errors (when given) as "line N: why".
// Borrowed properties are filled in once the whole text is read.
std::vector<RadioModel> ParseRadioDefinitions(std::string_view text,
                                              std::vector<std::string>* errors = nullptr);

}  // namespace tavlorin
