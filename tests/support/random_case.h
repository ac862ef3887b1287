#pragma once

#include "model/document_stamp.h"
#include "model/project.h"

namespace support {

/// A random project and the stamp of its documents, always the same for a seed.
struct RandomCase {
  model::Project project;
  model::DocumentStamp stamp;
};
RandomCase randomCase(unsigned seed);

/// The same with some numbers of its file others than a window would ever write.
RandomCase oddCase(unsigned seed);

/// How many random cases to try: the usual number, or that of KGEN_RANDOM_CASES.
unsigned randomCases(unsigned usual);

}  // namespace support
