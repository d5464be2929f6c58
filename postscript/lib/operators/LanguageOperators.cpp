#include "operators/LanguageOperators.h"

#include "operators/ArrayOperators.h"
#include "operators/BracketOperators.h"
#include "operators/ComparisonOperators.h"
#include "operators/CompositeOperators.h"
#include "operators/ControlOperators.h"
#include "operators/ConversionOperators.h"
#include "operators/DictionaryOperators.h"
#include "operators/FileOperators.h"
#include "operators/LogicalOperators.h"
#include "operators/LoopOperators.h"
#include "operators/MathOperators.h"
#include "operators/MatrixOperators.h"
#include "operators/OperatorTable.h"
#include "operators/OutputOperators.h"
#include "operators/StackOperators.h"
#include "operators/StatusOperators.h"
#include "operators/StringOperators.h"

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

static_assert(LanguageOperators::kSize == 105);

}  // namespace

void registerLanguageOperators(DictionarySet& dictionaries) {
  LanguageOperators::registerAll([&](Ref<NameObject> op) { dictionaries.registerOperator(std::move(op)); });
}

}  // namespace quillpress
