// The table of damaged inputs: one line per case, with how the input is damaged, how it
// is made, how it is handed over (a memory url, or a faulty url that breaks the stream
// under it) and what the module must answer.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "damaged_inputs.h"
#include "player_answer.h"

namespace tessel::damaged {

struct DamagedCase {
  std::string damage;  // how the input is damaged, which is also the case's name
  std::function<Bytes()> make;
  // A fault of faulty_io_module.cpp, or empty for a plain memory url; readfail and
  // length take their byte from the fraction at of the input's size.
  std::string fault;
  double at = 0;
  Answer answer;
};

const std::vector<DamagedCase>& DamagedCases();

}  // namespace tessel::damaged
