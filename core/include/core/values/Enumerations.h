// The enumerations of the library, as core/values/EnumValue.h describes them.
//
// | script                             | C++                                          | header             |
// |------------------------------------|----------------------------------------------|--------------------|
// | Key                                | EnumValuesKey                                | EnumKeys.h         |
// | DateFractions                      | ValueDateFractions                           | EnumPeriods.h      |
// | StandardBeginningDateVariant       | EnumValuesStandardBeginningDateVariant       | EnumPeriods.h      |
// | StandardPeriodVariant              | EnumValuesStandardPeriodVariant              | EnumPeriods.h      |
// | ControlBorderType                  | EnumValuesBorderType                         | EnumPresentation.h |
// | BorderType                         | EnumValuesBorderKind                         | EnumPresentation.h |
// | ColorType                          | EnumValuesColorType                          | EnumPresentation.h |
// | ColorDepth                         | EnumValuesColorDepthType                     | EnumPresentation.h |
// | FontType                           | EnumValuesFontType                           | EnumPresentation.h |
// | PictureType                        | EnumValuesPictureType                        | EnumPresentation.h |
// | PictureSize                        | EnumValuesPictureSize                        | EnumPresentation.h |
// | PictureFormat                      | EnumValuesPictureFormat                      | EnumPresentation.h |
// | HorizontalAlign                    | EnumValuesHAlign                             | EnumPresentation.h |
// | VerticalAlign                      | EnumValuesVAlign                             | EnumPresentation.h |
// | TextPositionRelativeToPicture      | EnumValuesCellTextPosition                   | EnumPresentation.h |
// | TextDirection                      | EnumValuesTextDirection                      | EnumPresentation.h |
// | SizeChangeMode                     | EnumValuesResizeType                         | EnumPresentation.h |
// | MainClientApplicationWindowMode    | EnumMainWindowModeType                       | EnumPresentation.h |
// | PageOrientation                    | EnumValuesPageOrientation                    | EnumPrinting.h     |
// | PagePlacementAlternation           | EnumValuesPageMarginType                     | EnumPrinting.h     |
// | DuplexPrintingType                 | EnumValuesDuplexType                         | EnumPrinting.h     |
// | UseOutput                          | EnumValuesUseOutput                          | EnumPrinting.h     |
// | PrintDialogUseMode                 | EnumValuesUsePrintDlgMode                    | EnumPrinting.h     |
// | RepresentableDocumentBatchFileType | EnumValuesRepresentableDocumentBatchFileType | EnumPrinting.h     |
// | AllowedLength                      | AllowedLength                                | EnumSystem.h       |
// | AllowedSign                        | AllowedSign                                  | EnumSystem.h       |
// | RoundMode                          | NumericRoundMode                             | EnumSystem.h       |
// | FillChecking                       | FillCheckEnum                                | EnumSystem.h       |
// | SortDirection                      | SortTypes                                    | EnumSystem.h       |
// | SearchDirection                    | SearchDirection                              | EnumSystem.h       |
// | UUIDVersion                        | UUIDVersion                                  | EnumSystem.h       |
// | TextEncoding                       | EnumValuesFileType                           | EnumSystem.h       |
// | FileDragMode                       | EnumFileDragModeType                         | EnumSystem.h       |
// | PlatformType                       | OrbPlatformType                              | EnumSystem.h       |
// | ErrorCategory                      | ValuesExceptionCategory                      | EnumSystem.h       |
//
// The integers are stored in data and never change.
#pragma once

#include <core/values/EnumKeys.h>
#include <core/values/EnumPeriods.h>
#include <core/values/EnumPresentation.h>
#include <core/values/EnumPrinting.h>
#include <core/values/EnumSystem.h>
