#pragma once

namespace pictures {

/// Lets screen readers walk through the parts of a ChoicePicture. Once for all of them.
void installChoiceAccess();

}  // namespace pictures
