// What a cloud that means harm answers.
#pragma once

// Rows of `answers`, as the stand-in takes them, and of what stands in the log at their
// `end`. After none of them is there an installer.
void addCloudAttacks();
