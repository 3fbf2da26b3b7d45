// Blocks need no declarations to be type-checked. GNUstep's headers include this file.
#pragma once
