#pragma once

#include "postscript/lib/operators/Operator.h"

namespace quillpress {

// any  dict  dict      The size is taken and ignored: dictionaries grow as needed.
DECLARE_OPERATOR(DictOperator, "dict");

// dict  begin  -
DECLARE_OPERATOR(BeginOperator, "begin");

// -  end  -      Kept: nothing protects the permanent dictionaries (dictionaries/end.ps).
DECLARE_OPERATOR(EndOperator, "end");

// key value  def  -
DECLARE_OPERATOR(DefOperator, "def");

// key  load  value
DECLARE_OPERATOR(LoadOperator, "load");

// key value  store  -      Into the topmost dictionary that has the key, else the top one.
DECLARE_OPERATOR(StoreOperator, "store");

// key  where  dict true
// key  where  false
DECLARE_OPERATOR(WhereOperator, "where");

// dict key  known  bool
DECLARE_OPERATOR(KnownOperator, "known");

// dict key  undef  -      Kept: anything but a dictionary is taken and left alone (dictionaries/undef.ps).
DECLARE_OPERATOR(UndefOperator, "undef");

// -  currentdict  dict
DECLARE_OPERATOR(CurrentdictOperator, "currentdict");

// -  cleardictstack  -      Leaves systemdict, globaldict and userdict, whatever end removed before.
DECLARE_OPERATOR(CleardictstackOperator, "cleardictstack");

// dict  maxlength  int      Ten more than there are entries.
DECLARE_OPERATOR(MaxlengthOperator, "maxlength");

}  // namespace quillpress
