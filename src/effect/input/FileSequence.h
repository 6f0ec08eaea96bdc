// A numbered sequence of pictures beside a file: "shot0007.png" stands for every
// "shot<number>.png" in its folder. Built once per change of the file, then read by the
// render threads.
#pragma once

#include <cstdint>
#include <string>
#include <map>
#include <vector>

namespace Effect {

class FileSequence {
 public:
  // Lists the folder of `path`.
  explicit FileSequence(const std::wstring& path);
  // From names already listed (paths of the same folder).
  FileSequence(const std::wstring& path, const std::vector<std::wstring>& siblings);

  // The file shown for `number`: below the lowest number the lowest; above the highest
  // the plain file; a gap shows the next lower number. A name without a number has no
  // sequence: always the plain file.
  const std::wstring& pick(std::int64_t number) const;
  bool empty() const noexcept { return files_.empty(); }

 private:
  void add(const std::vector<std::wstring>& siblings);

  std::wstring path_;
  // Ordered, so that a gap finds the number below it at once.
  std::map<std::int64_t, std::wstring> files_;
};

}  // namespace Effect
