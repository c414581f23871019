// The exports that lead to the platform as they are: everything but the two that create a factory.
#pragma once

/// Looks all of them up; before the first call of any.
void ExportsBind();
