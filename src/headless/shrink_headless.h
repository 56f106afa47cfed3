#pragma once

namespace dovrex {

class HeadlessRunner;
struct HeadlessArgs;

// The headless runner's commands of the shrink, the selection and the weights (docs/headless.md).
bool headless_Shrink(HeadlessRunner& r, const HeadlessArgs& a);           // shrink <t> [<issue>]
bool headless_ShrinkOptimised(HeadlessRunner& r, const HeadlessArgs& a);  // shrink-opt <t> [<s>] [<issue>]
bool headless_Coverage(HeadlessRunner& r, const HeadlessArgs& a);         // coverage [<issue>]
bool headless_Select(HeadlessRunner& r, const HeadlessArgs& a);           // select <n> [<issue>]
bool headless_Weights(HeadlessRunner& r, const HeadlessArgs& a);          // weights <preset> | <n>=<value>...

}  // namespace dovrex
