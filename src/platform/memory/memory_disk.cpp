#include "platform/memory/memory_disk.h"

#include <utility>

#include "text/utf16.h"

namespace rivelt {
namespace {

// All that differ in letter case only from the given one.
void Erase_Alike(Memory_Names& names, const Text& folded) {
  std::erase_if(names, [&](const auto& name) { return name.first.Folded == folded; });
}

using Asked = std::function<bool(Text_View)>;

void Lose_Power_In(Memory_Node& folder, const Text& path, const Asked& forgets) {
  if (forgets(path)) folder.Names = folder.Durable_Names;
  folder.Durable_Names = folder.Names;
  for (const auto& [name, node] : folder.Names) {
    if (node->Is_Folder) Lose_Power_In(*node, Memory_Tree::Below(path, name.Name), forgets);
    if (!std::exchange(node->Is_Flushed, true)) node->Bytes.clear();
  }
}

}  // namespace

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
