#include "media/color_profiles.h"

#include <new>
#include <string>

#include "loading/registries.h"
#include "providers/providers.h"
#include "types/reference_types.h"
#include "vorna/pixel/colorprofile.h"
#include "vorna/system.h"

namespace vorna::host {

namespace {

struct ProfileBlock {
  Id name;
};

void* Alloc(const SourceLocation& location) {
  void* block = System::AllocCounted(sizeof(ProfileBlock), location);
  return block ? new (block) ProfileBlock() : nullptr;
}

void Free(void* block) {
  static_cast<ProfileBlock*>(block)->~ProfileBlock();
  System::FreeCounted(block);
}

void* Clone(const void* source, const SourceLocation& location) {
  void* block = Alloc(location);
  if (block) static_cast<ProfileBlock*>(block)->name = static_cast<const ProfileBlock*>(source)->name;
  return block;
}

const Id* GetName(const void* block) { return &static_cast<const ProfileBlock*>(block)->name; }

ColorProfileInterface::Table MakeTable() {
  ColorProfileInterface::Table table{};
  table.Free = &Free;
  table.Alloc = &Alloc;
  table.Clone = &Clone;
  table.GetName = &GetName;
  return table;
}

const ColorProfileInterface::Table g_table = MakeTable();

void ConstructNull(void* value) { *static_cast<void**>(value) = nullptr; }
void Release(void* value) { ColorProfile().Adopt(*static_cast<void**>(value)); }
void MoveInto(void* destination, void* source) {
  *static_cast<void**>(destination) = *static_cast<void**>(source);
  *static_cast<void**>(source) = nullptr;
}
Bool CopyInto(void* destination, const void* source) {
  void* block = *static_cast<void* const*>(source);
  if (block) RefCounter::AddReference(block);
  *static_cast<void**>(destination) = block;
  return true;
}

// A Data holding one reference to a profile block.
const DataType g_profileReference{&ConstructNull, &Release, &MoveInto, &CopyInto,
                                  Id("vorna.ParametricTypes:ColorProfileReference"), 8, nullptr,
                                  refclass::COLOR_PROFILE};

}  // namespace

void RegisterColorProfileProvider() {
  RegisterProvider(ColorProfileInterface::ID, &g_table, ColorProfileInterface::COUNT);
}

void PublishColorProfiles() {
  PublishDataType(g_profileReference);
  for (std::string_view name : pixel::kColorProfileNames) {
    void* block = Alloc(SourceLocation{"host/colorprofiles", 1, 0});
    if (!block || !static_cast<ProfileBlock*>(block)->name.Init(name.data(), Int(name.size()))) {
      if (block) Free(block);
      continue;
    }
    Data value;
    value.MoveValue(&g_profileReference, &block);
    std::string id = std::string(pixel::kColorProfileRegistry) + ":" + std::string(name);
    (void)Publish(Id(id.c_str()), value);
  }
}

Data MakeColorProfileData(const ColorProfile& profile) {
  Data value;
  const void* block = profile.GetBlock();
  if (block) value.SetValue(&g_profileReference, &block);
  return value;
}

ColorProfile FindColorProfile(const Char* name) {
  std::string id = std::string(pixel::kColorProfileRegistry) + ":" + name;
  const Data* value = FindPublished(Id(id.c_str()));
  return value ? ColorProfile::FromBlock(*static_cast<void* const*>(value->GetAddress())) : ColorProfile();
}

}  // namespace vorna::host
