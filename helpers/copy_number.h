// Which copy of a register or memory belongs to a chip block or a core, as the SDK's control record of the
// unit has it. No function calls the SDK. A unit that is not attached raises ValueError.
#pragma once

/// The copy number of a block. A block that the unit's table lacks raises ValueError.
int get_copyno_any(int unit, int block);

/// The block of a core, 0 or 1, in the egress queues (EGQ), ingress header builder (IHB), ingress header
/// processor (IHP) or ingress queue manager (IQM); the broadcast block for core -17; -1 for any other core.
int get_copyno_egq(int unit, int core);
int get_copyno_ihb(int unit, int core);
int get_copyno_ihp(int unit, int core);
int get_copyno_iqm(int unit, int core);
