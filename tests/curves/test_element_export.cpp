#include "curves/element_export.h"
