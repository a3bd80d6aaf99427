#include "platform/memory/memory_disk.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <unordered_map>
#include <utility>

#include "text/utf16.h"
#include "text/utf8.h"

namespace rivelt {
namespace {

constexpr std::size_t Longest_Name = 255;
constexpr std::int64_t Time_Of_A_Write = 1'000;
constexpr Text_View Path_Of_Root = u"\\";
constexpr Text_View Path_Of_Working_Folder = u".";

std::int64_t Nanoseconds_Since_1970() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

bool Is_From_Root(Text_View path) {
  return !path.empty() && (path[0] == u'\\' || path[0] == u'/');
}

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

bool Is_Usable(Text_View path) {
  return !path.empty() && path.find(u'\0') == Text_View::npos &&
         std::ranges::all_of(Components(path),
                             [](Text_View name) { return name.size() <= Longest_Name; });
}

Memory_Names::iterator First_That_Fits(Memory_Names& names, const Text& folded) {
  const auto first = names.lower_bound({folded, Text()});
  return first != names.end() && first->first.Folded == folded ? first : names.end();
}

Memory_Names::iterator Look_Up(Memory_Names& names, Text_View name) {
  const Name_Key key = Key_Of(name);
  const auto as_spelled = names.find(key);
  return as_spelled != names.end() ? as_spelled : First_That_Fits(names, key.Folded);
}

using Copies = std::unordered_map<const Memory_Node*, std::shared_ptr<Memory_Node>>;

std::shared_ptr<Memory_Node> Copy_Of(const Memory_Node& node, Copies& copies) {
  std::shared_ptr<Memory_Node>& copy = copies[&node];
  if (copy) return copy;
  copy = std::make_shared<Memory_Node>(node);
  for (Memory_Names* names : {&copy->Names, &copy->Durable_Names}) {
    for (auto& [name, child] : *names) child = Copy_Of(*child, copies);
  }
  return copy;
}

// All that differ in letter case only from the given one.
void Erase_Alike(Memory_Names& names, const Text& folded) {
  std::erase_if(names, [&](const auto& name) { return name.first.Folded == folded; });
}

using Asked = std::function<bool(Text_View)>;

void Lose_Power_In(Memory_Node& folder, const Text& path, const Asked& forgets) {
  if (forgets(path)) folder.Names = folder.Durable_Names;
  folder.Durable_Names = folder.Names;
  for (const auto& [name, node] : folder.Names) {
    if (node->Is_Folder) Lose_Power_In(*node, Memory_Disk::Below(path, name.Name), forgets);
    if (!std::exchange(node->Is_Flushed, true)) node->Bytes.clear();
  }
}

}  // namespace

Text Memory_Node::Content() const {
  return Bytes.starts_with(Utf16_Mark) ? From_Utf16(Bytes) : From_Utf8(Bytes);
}

Memory_Disk::Memory_Disk()
    : Time(Nanoseconds_Since_1970()), Root(Make_Folder()), Working_Folder(Make_Folder()) {}

Memory_Disk::Memory_Disk(const Memory_Disk& other)
    : Tells_Letter_Case_Apart(other.Tells_Letter_Case_Apart),
      Time(other.Time),
      Refuses_Links(other.Refuses_Links),
      On_Next_Read(other.On_Next_Read),
      Last_Id(other.Last_Id) {
  Copies copies;
  Root = Copy_Of(*other.Root, copies);
  Working_Folder = Copy_Of(*other.Working_Folder, copies);
}

Memory_Disk::Item Memory_Disk::Find(Text_View path) const {
  if (!Is_Usable(path)) return {};
  const bool from_root = Is_From_Root(path);
  Item item{Text(from_root ? Path_Of_Root : Path_Of_Working_Folder),
            from_root ? Root : Working_Folder};
  for (const Text_View name : Components(path)) {
    const auto found = Look_Up(item.Node->Names, name);
    if (found == item.Node->Names.end()) return {};
    item = {Below(item.Path, found->first.Name), found->second};
  }
  return item;
}

std::vector<Memory_Disk::Item> Memory_Disk::In_Folder(Text_View path, bool folders) const {
  const Item folder = Find(path);
  std::vector<Item> found;
  if (!folder.Node) return found;
  for (const auto& [name, node] : folder.Node->Names) {
    if (node->Is_Folder == folders) found.push_back({Below(folder.Path, name.Name), node});
  }
  return found;
}

Memory_Disk::Place Memory_Disk::Place_Of(Text_View path) const {
  if (!Is_Usable(path) || Components(path).empty()) throw Failure();
  const Item folder = Find(Parent(path));
  if (!folder.Is_Folder()) throw Failure();
  return {folder.Node, Text(Components(path).back())};
}

Memory_Names::iterator Memory_Disk::In_The_Way(const Place& place) const {
  Memory_Names& names = place.Folder->Names;
  const auto found = Look_Up(names, place.Name);
  const bool is_apart = found != names.end() && Tells_Letter_Case_Apart &&
                        !found->second->Is_Folder && found->first.Name != place.Name;
  return is_apart ? names.end() : found;
}

bool Memory_Disk::Is_Taken(Text_View path) const {
  const Place place = Place_Of(path);
  return In_The_Way(place) != place.Folder->Names.end();
}

Text Memory_Disk::Place_Of_New(Text_View path) const {
  const Text name = Place_Of(path).Name;
  return Below(Find(Parent(path)).Path, name);
}

Memory_Disk::Node_Pointer Memory_Disk::Make_File(std::string bytes) {
  auto file = std::make_shared<Memory_Node>();
  file->Id = ++Last_Id;
  Write(*file, std::move(bytes));
  return file;
}

Memory_Disk::Node_Pointer Memory_Disk::Make_Folder() {
  auto folder = std::make_shared<Memory_Node>();
  folder->Id = ++Last_Id;
  folder->Is_Folder = true;
  return folder;
}

void Memory_Disk::Write(Memory_Node& file, std::string bytes) {
  file.Bytes = std::move(bytes);
  file.Modified = Time;
  file.Is_Flushed = false;
  Time += Time_Of_A_Write;
}

void Memory_Disk::Link(Text_View path, Node_Pointer node) {
  const Place place = Place_Of(path);
  Memory_Names& names = place.Folder->Names;
  node->Came = Time;
  if (const auto old = In_The_Way(place); old != names.end()) names.erase(old);
  names[Key_Of(place.Name)] = std::move(node);
}

void Memory_Disk::Unlink(Text_View path) {
  const Place place = Place_Of(path);
  const auto found = Look_Up(place.Folder->Names, place.Name);
  if (found == place.Folder->Names.end()) throw Failure();
  place.Folder->Names.erase(found);
}

std::uint32_t Memory_Disk::Number_Of_Names(const Memory_Node& file) const {
  std::uint32_t count = 0;
  const std::function<void(const Memory_Node&)> count_in = [&](const Memory_Node& folder) {
    for (const auto& [name, node] : folder.Names) {
      if (node.get() == &file) ++count;
      count_in(*node);
    }
  };
  count_in(*Root);
  count_in(*Working_Folder);
  return count;
}

Text Memory_Disk::Below(Text_View folder, Text_View name) {
  Text path(folder);
  if (!path.ends_with(u'\\')) path += u'\\';
  return path.append(name);
}

Text Memory_Disk::Parent(Text_View path) {
  std::vector<Text_View> names = Components(path);
  if (!names.empty()) names.pop_back();
  Text parent(Is_From_Root(path) ? Path_Of_Root : Path_Of_Working_Folder);
  for (const Text_View name : names) parent = Below(parent, name);
  return parent;
}

void Memory_Disk::Make_Name_Durable(Text_View path) {
  const Place place = Place_Of(path);
  const Text folded = Fold_Case(place.Name);
  Erase_Alike(place.Folder->Durable_Names, folded);
  for (const auto& [name, node] : place.Folder->Names) {
    if (name.Folded == folded) place.Folder->Durable_Names[name] = node;
  }
}

void Memory_Disk::Put(Text_View path, Node_Pointer node) {
  Put_Folder(Parent(path));
  node->Is_Flushed = true;
  Link(path, std::move(node));
  Make_Name_Durable(path);
}

void Memory_Disk::Put_Folder(Text_View path) {
  if (!Find(path).Node) Put(path, Make_Folder());
}

void Memory_Disk::Put_File(Text_View path, Text_View content) {
  Put_Bytes(path, To_Utf16(content));
}

void Memory_Disk::Put_Bytes(Text_View path, std::string_view bytes) {
  Put(path, Make_File(std::string(bytes)));
}

void Memory_Disk::Edit_In_Place(Text_View path, Text_View content) {
  Edit_Bytes_In_Place(path, To_Utf16(content));
}

void Memory_Disk::Edit_Bytes_In_Place(Text_View path, std::string_view bytes) {
  const Item file = Find(path);
  if (!file.Is_File()) throw Failure();
  Write(*file.Node, std::string(bytes));
  file.Node->Is_Flushed = true;
}

void Memory_Disk::Rename(Text_View path, Text_View new_name) {
  const Item item = Find(path);
  if (!item.Node) throw Failure();
  const Text new_path = Below(Parent(item.Path), new_name);
  if (Is_Taken(new_path) && Find(new_path).Path != item.Path) throw Failure();
  Unlink(item.Path);
  Link(new_path, item.Node);
  Make_Name_Durable(item.Path);
  Make_Name_Durable(new_path);
}

void Memory_Disk::Make_Read_Only(Text_View path) {
  const Item file = Find(path);
  if (!file.Is_File()) throw Failure();
  file.Node->Is_Read_Only = true;
}

void Memory_Disk::Remove(Text_View path) {
  const Item item = Find(path);
  if (!item.Node) return;
  Unlink(item.Path);
  Make_Name_Durable(item.Path);
}

Text Memory_Disk::Content(Text_View path) const {
  const Item item = Find(path);
  return item.Is_File() ? item.Content() : u"(no such file)";
}

std::vector<Text> Memory_Disk::Names(Text_View folder) const {
  std::vector<Text> names;
  for (const Item& item : In_Folder(folder, false)) names.push_back(Name(item.Path));
  return names;
}

void Memory_Disk::Flush(Text_View folder_path) {
  const Item folder = Find(folder_path);
  if (!folder.Is_Folder()) throw Failure();
  folder.Node->Durable_Names = folder.Node->Names;
  for (const auto& [name, node] : folder.Node->Names) node->Is_Flushed = true;
}

void Memory_Disk::Lose_Power(const std::function<bool(Text_View folder_path)>& forgets) {
  Lose_Power_In(*Root, u"\\", forgets);
  Lose_Power_In(*Working_Folder, u".", forgets);
}

}  // namespace rivelt
