// Marks a function that the loadable module offers to the outside. packaging/exports.txt is the
// list that decides; this attribute only keeps the symbol visible up to the link.
#pragma once

#define TW_EXPORT __attribute__((visibility("default")))
