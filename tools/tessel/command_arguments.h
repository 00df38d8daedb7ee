// The arguments of one command: positional words, options with a value ("-o OUT",
// "--at 1.5"), options that may come again ("--setting K=V"), and flags ("--json").
// Anything the command does not know is a usage failure.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "failure.h"

namespace tessel::cli {

struct ArgumentSpec {
  std::vector<std::string> valueOptions;
  std::vector<std::string> flags;
  size_t positionals = 0;  // exactly this many
  const char* positionalNames = "";  // for the message when their count is wrong
  std::vector<std::string> repeatedOptions = {};  // with a value, any number of times
};

class CommandArguments {
 public:
  bool Parse(const std::vector<std::string>& arguments, const ArgumentSpec& spec, Failure& failure);

  const std::string& Positional(size_t index) const { return _positionals[index]; }
  bool Has(const std::string& name) const { return _given.count(name) != 0; }
  // The value of an option, or fallback when it was not given.
  std::string Text(const std::string& name, const std::string& fallback = "") const;
  // Every value of a repeated option, in order.
  std::vector<std::string> Values(const std::string& name) const;
  // The value as seconds (a finite number, 0 or more); fallback when not given.
  bool Seconds(const std::string& name, double fallback, double& value, Failure& failure) const;
  // The value as a whole number from minimum to maximum; fallback when not given.
  bool Count(const std::string& name, int64_t fallback, int64_t minimum, int64_t maximum, int64_t& value,
             Failure& failure) const;

 private:
  std::vector<std::string> _positionals;
  std::map<std::string, std::string> _given;
  std::multimap<std::string, std::string> _repeated;
};

}  // namespace tessel::cli
