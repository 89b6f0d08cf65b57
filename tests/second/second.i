// A module that the system's SWIG makes, which knows some of the SDK's types under the same names.
%module second

%{
#include <bcm/l2.h>
typedef int intp;
%}

%include <cpointer.i>
%pointer_class(int, intp)

typedef unsigned int uint32;
typedef struct bcm_l2_addr_s {
    uint32 flags;
    int port;
} bcm_l2_addr_t;

%inline %{
static uint32 read_flags(bcm_l2_addr_t *address)
{
    return address ? address->flags : 0;
}

static int read_int(int *number)
{
    return *number;
}

// Not a type that the other module has.
struct only_here {
    int value;
};
%}
