// The error classes: vorna.ErrorObjectClass holds location, message, cause and code;
// one class per kind of error adds its own interface on top, and its shared prototype
// is published as vorna.XErrorObject.
#pragma once

namespace vorna::host {

void CreateErrorClasses();
void DestroyErrorClasses();

}  // namespace vorna::host
