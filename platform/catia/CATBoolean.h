#ifndef CATBoolean_H
#define CATBoolean_H

typedef unsigned char CATBoolean;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

#endif
