// Project files as somebody makes them who has the password and means harm. What is made depends on
// the seed alone.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "platform/sqlcipher/Engine.h"
#include "platform/sqlcipher/KeyRing.h"

namespace velmoor::fuzz {

class HostileMaker {
 public:
  // `pattern` is the template of a project.
  explicit HostileMaker(std::string pattern);

  // Lays the project of that number under `path`; the result tells what is wrong with it.
  std::string Make(const std::string& path, std::uint32_t number);

 private:
  using Random = std::mt19937;
  using Statements = std::vector<std::string>;

  [[nodiscard]] static std::size_t Below(Random& random, std::size_t bound);
  [[nodiscard]] static std::string Table(Random& random);
  [[nodiscard]] static std::string Column(Random& random, const std::string& table);
  [[nodiscard]] static std::string Value(Random& random);
  [[nodiscard]] static std::string Where(Random& random);

  // Statements that another tool would run on the file.
  [[nodiscard]] static Statements SchemaTrick(Random& random);
  [[nodiscard]] static Statements WrongTypes(Random& random);
  [[nodiscard]] static Statements Huge(Random& random);
  [[nodiscard]] static Statements Missing(Random& random);
  [[nodiscard]] static Statements Doubled(Random& random);
  [[nodiscard]] static Statements TextAgainstWire(Random& random);

  // Bytes of the file: pages changed under the right key, bytes under none, a cut, an addition.
  std::string ChangePages(const std::string& path, Random& random);
  [[nodiscard]] static std::string ChangeBytes(const std::string& path, Random& random);

  std::string pattern_;
  sqlcipher::KeyRing keys_;
  sqlcipher::Salt salt_{};
};

}  // namespace velmoor::fuzz
