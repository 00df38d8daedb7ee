// Objects in a tree: parents, children and siblings, with notifications when the tree
// changes. Streams and images are such objects; this code walks no tree.
#pragma once

#include "vorna/observable.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(HierarchyObjectInterface, ObserverObjectInterface, "vorna.HierarchyObjectInterface#1", refclass::STRONG,
                         kInsertBefore, kInsertAfter, kInsertAsFirstChildOf, kInsertAsLastChildOf,
                         kInsertAsChildAt, kInsertChildAsFirst, kInsertChildAsLast, kInsertChildAt,
                         kInsertChildrenAsFirst, kInsertChildrenAsLast, kInsertChildrenAt, kReplace, kRemove,
                         kRemoveChildren, kRemoveAllChildren, kGetOwner, kGetFirstChild, kGetLastChild,
                         kGetChildAt, kGetChildren, kGetBranches, kGetParent, kGetNext, kGetPrev,
                         kParentChanged, kObservableHierarchyInsert, kObservableHierarchyRemove);

extern ObjectUseRecord g_HierarchyObjectClass;

}  // namespace vorna
