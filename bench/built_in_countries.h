// The country tables of the shipped countries list, built once, for the benchmarks that look
// callsigns up.
#pragma once

#include <string>
#include <vector>

#include "geo/countries_file.h"
#include "geo/country_tables.h"
#include "shell/definition_file.h"
#include "shell/paths.h"

namespace tavlorin {

inline const CountryTables& BuiltInTables() {
  static CountryTables tables = [] {
    std::vector<std::string> lines;
    ReadDefinitionBody(SharedDataDir() / "TVR Countries.txt", &lines);
    CountryTables t;
    t.Build(ParseCountryLines(lines).rows);
    return t;
  }();
  return tables;
}

}  // namespace tavlorin
