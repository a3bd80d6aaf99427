#include "platform/memory/memory_disk.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "text/letter_case.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr std::size_t Longest_Name = 255;
constexpr Text_View Working_Folder = u".";

std::vector<Text_View> Components(Text_View path) {
  std::vector<Text_View> components;
  while (!path.empty()) {
    const Text_View name = path.substr(0, path.find_first_of(u"\\/"));
    path.remove_prefix(std::min(path.size(), name.size() + 1));
    if (name.empty() || name == u".") continue;
    if (name == u".." && !components.empty() && components.back() != u"..") {
      components.pop_back();
    } else {
      components.push_back(name);
    }
  }
  return components;
}

// "\a\b", or ".\a\b" for a path that does not begin at the root.
Text Plain(Text_View path) {
  const bool from_root = !path.empty() && (path[0] == u'\\' || path[0] == u'/');
  Text plain(from_root ? Text_View() : Working_Folder);
  for (const Text_View name : Components(path)) plain.append(u"\\").append(name);
  return plain;
}

Text Key(Text_View path) {
  return Fold_Case(Plain(path));
}

bool Is_Usable(Text_View path) {
  return !path.empty() && path.find(u'\0') == Text_View::npos &&
         std::ranges::all_of(Components(path),
                             [](Text_View name) { return name.size() <= Longest_Name; });
}

std::string Utf16_Bytes(Text_View text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

Text From_Utf16_Bytes(std::string_view bytes) {
  const bool high_first = bytes.starts_with("\xFE\xFF");
  if (high_first || bytes.starts_with("\xFF\xFE")) bytes.remove_prefix(2);
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  Text text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const int high = byte(high_first ? i : i + 1);
    text += static_cast<char16_t>(high << 8 | byte(high_first ? i + 1 : i));
  }
  if (bytes.size() % 2 != 0) text += static_cast<char16_t>(byte(bytes.size() - 1));
  return text;
}

}  // namespace

Text Memory_Disk::Item::Content() const {
  return Is_Narrow ? From_Utf8(Bytes) : From_Utf16_Bytes(Bytes);
}

Memory_Disk::Memory_Disk() {
  for (const Text_View start : {Text_View(), Working_Folder}) {
    Items[Text(start)] = {.Path = Text(start), .Is_Folder = true, .Bytes = {}, .Id = ++Last_Id};
  }
}

Memory_Disk::Item& Memory_Disk::Put(Text_View path, Item item) {
  Put_Folder(Parent(path));
  item.Path = Plain(path);
  item.Id = ++Last_Id;
  return Items[Key(path)] = std::move(item);
}

void Memory_Disk::Put_Folder(Text_View path) {
  if (Items.contains(Key(path))) return;
  Item folder;
  folder.Is_Folder = true;
  Put(path, std::move(folder));
}

void Memory_Disk::Put_File(Text_View path, Text_View content) {
  Put_Bytes(path, Utf16_Bytes(content));
}

void Memory_Disk::Put_Bytes(Text_View path, std::string_view bytes, bool is_narrow) {
  Item& file = Put(path, {});
  file.Bytes = bytes;
  file.Is_Narrow = is_narrow;
}

void Memory_Disk::Put_Copy(const Item& file, Text_View path) {
  Put(path, file);
}

void Memory_Disk::Remove(Text_View path) {
  const Text key = Key(path);
  std::erase_if(Items, [&](const auto& item) {
    return item.first == key || item.first.starts_with(key + u"\\");
  });
}

void Memory_Disk::Rename_Folder(Text_View path, Text_View new_path) {
  const Text key = Key(path);
  const Text new_key = Key(new_path);
  const std::size_t length = Plain(path).size();
  for (auto item = Items.lower_bound(key); item != Items.end() && item->first.starts_with(key);) {
    const auto next = std::next(item);
    if (item->first.size() == key.size() || item->first[key.size()] == u'\\') {
      auto node = Items.extract(item);
      node.key().replace(0, key.size(), new_key);
      node.mapped().Path.replace(0, length, Plain(new_path));
      Items.insert(std::move(node));
    }
    item = next;
  }
}

const Memory_Disk::Item* Memory_Disk::Find(Text_View path) const {
  if (!Is_Usable(path)) return nullptr;
  const auto found = Items.find(Key(path));
  return found == Items.end() ? nullptr : &found->second;
}

Memory_Disk::Item* Memory_Disk::Find(Text_View path) {
  return const_cast<Item*>(std::as_const(*this).Find(path));
}

Text Memory_Disk::Content(Text_View path) const {
  const Item* item = Find(path);
  return item == nullptr || item->Is_Folder ? u"(no such file)" : item->Content();
}

std::vector<const Memory_Disk::Item*> Memory_Disk::In_Folder(Text_View path, bool folders) const {
  const Text start = Key(path) + u"\\";
  std::vector<const Item*> found;
  for (auto item = Items.lower_bound(start); item != Items.end() && item->first.starts_with(start);
       ++item) {
    const bool is_direct = item->first.find(u'\\', start.size()) == Text::npos;
    if (is_direct && item->second.Is_Folder == folders) found.push_back(&item->second);
  }
  return found;
}

std::vector<Text> Memory_Disk::Names(Text_View folder) const {
  std::vector<Text> names;
  for (const Item* item : In_Folder(folder, false)) names.push_back(Name(item->Path));
  return names;
}

void Memory_Disk::Require_Usable(Text_View path) {
  if (!Is_Usable(path)) throw Failure();
}

Text Memory_Disk::Parent(Text_View path) {
  const Text plain = Plain(path);
  const Text parent = plain.substr(0, std::min(plain.size(), plain.rfind(u'\\')));
  return parent.empty() ? u"\\" : parent;
}

}  // namespace rivelt
