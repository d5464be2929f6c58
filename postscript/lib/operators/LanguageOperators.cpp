#include "postscript/lib/operators/LanguageOperators.h"

#include "postscript/lib/operators/ArrayOperators.h"
#include "postscript/lib/operators/BracketOperators.h"
#include "postscript/lib/operators/ComparisonOperators.h"
#include "postscript/lib/operators/CompositeOperators.h"
#include "postscript/lib/operators/ControlOperators.h"
#include "postscript/lib/operators/ConversionOperators.h"
#include "postscript/lib/operators/DictionaryOperators.h"
#include "postscript/lib/operators/FileOperators.h"
#include "postscript/lib/operators/LogicalOperators.h"
#include "postscript/lib/operators/LoopOperators.h"
#include "postscript/lib/operators/MathOperators.h"
#include "postscript/lib/operators/MatrixOperators.h"
#include "postscript/lib/operators/OperatorTable.h"
#include "postscript/lib/operators/OutputOperators.h"
#include "postscript/lib/operators/StackOperators.h"
#include "postscript/lib/operators/StatusOperators.h"
#include "postscript/lib/operators/StringOperators.h"

namespace quillpress {

namespace {

// The order is behaviour: it is the order of the registry's list of replaced names.
// clang-format off
using LanguageOperators = OperatorTable<
    LeftCurlyBraceOperator,
    RightCurlyBraceOperator,
    LeftSquareBracketOperator,
    RightSquareBracketOperator,
    MarkOperator,
    CleartomarkOperator,
    CounttomarkOperator,
    WhereOperator,
    KnownOperator,
    IfelseOperator,
    IfOperator,
    TrueOperator,
    FalseOperator,
    NullOperator,
    NotOperator,
    AndOperator,
    OrOperator,
    XOrOperator,
    PopOperator,
    GeOperator,
    GtOperator,
    EqOperator,
    NeOperator,
    LtOperator,
    LeOperator,
    DupOperator,
    PutOperator,
    GetOperator,
    StoreOperator,
    DictOperator,
    UndefOperator,
    CurrentdictOperator,
    BeginOperator,
    DefOperator,
    ForOperator,
    ForallOperator,
    LoopOperator,
    RepeatOperator,
    ExitOperator,
    EndOperator,
    SubOperator,
    AddOperator,
    MulOperator,
    DivOperator,
    IdivOperator,
    CosOperator,
    SinOperator,
    AtanOperator,
    SqrtOperator,
    NegOperator,
    AbsOperator,
    ModOperator,
    BindOperator,
    MatrixOperator,
    IdentmatrixOperator,
    ConcatmatrixOperator,
    ClearOperator,
    CountOperator,
    CleardictstackOperator,
    ExchOperator,
    RollOperator,
    IndexOperator,
    LoadOperator,
    CurrentfileOperator,
    ReadOperator,
    ReadlineOperator,
    ReadhexstringOperator,
    CurrentglobalOperator,
    SetglobalOperator,
    FilterOperator,
    StringOperator,
    ReadstringOperator,
    StoppedOperator,
    StopOperator,
    ExecOperator,
    CvxOperator,
    XcheckOperator,
    ArrayOperator,
    PackedarrayOperator,
    SetpackingOperator,
    CurrentpackingOperator,
    FloorOperator,
    CeilingOperator,
    RoundOperator,
    CopyOperator,
    ReadonlyOperator,
    AloadOperator,
    AstoreOperator,
    TypeOperator,
    CvrOperator,
    CviOperator,
    CvnOperator,
    CvsOperator,
    LengthOperator,
    MaxlengthOperator,
    PutintervalOperator,
    GetintervalOperator,
    StackOperator,
    EqualsSignOperator,
    DoubleEqualsSignOperator,
    VmstatusOperator,
    StatusdictOperator,
    DefinefontOperator,
    ResourcestatusOperator,
    AnchorsearchOperator>;
// clang-format on

// A row that is lost would be found by a job only.
static_assert(LanguageOperators::kSize == 105);

}  // namespace

void registerLanguageOperators(DictionarySet& dictionaries) {
  LanguageOperators::registerAll([&](Ref<NameObject> op) { dictionaries.registerOperator(std::move(op)); });
}

}  // namespace quillpress
