#include "vorna/translationunit.h"

#include "vorna/classinterface.h"

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(Class, nullptr, &Class::Table::AddBase, &Class::Table::AddComponent,
                              &Class::Table::Finish, &Class::Table::CreateObject, &Class::Table::CloneObject);

}  // namespace vorna
