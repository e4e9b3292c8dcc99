// A library of a host that needs the module, so that the module comes and goes with it.
#include "ModuleUse.h"

extern "C" Q_DECL_EXPORT void zkUseModule(QByteArray *seen)
{
    *seen = useModule().join(QLatin1Char('\n')).toUtf8();
}
