// RadioModel: what the program knows of a model before connecting: its company, the family
// code it connects with, its default speed and (ICOM) default CI-V address.
//
// FindRadioModel looks a model up by its exact name ("TS-2000", "K2: Demo"). The table is
// immutable and shared; any thread may read it.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tavlorin {

struct RadioModel {
  std::string name;
  std::string company;
  int manufacturer = 0;  // the family the model connects as (6 for demonstration models)
  std::string defaultSpeed;
  std::string civAddress;  // hexadecimal, ICOM family only
};

// nullptr when the model is not known ("Radio definition not found").
const RadioModel* FindRadioModel(std::string_view name);
std::span<const RadioModel> AllRadioModels();

}  // namespace tavlorin
