// The content editor panel: the slides, the text objects (captions) of the selected slide and the
// controls that edit one text object. Loaded from the nib "PrivateView" and placed in the settings
// window by its controller. Main thread only.
#import <AppKit/AppKit.h>

#include <cstdint>

@class PluginSettingsInfo;
@class TableViewProtocol;
@class XMLElement;

@interface PrivateView : NSView {
  NSTableView *tableView;
  NSTableView *tbContent;
  NSButton *btnAdd;
  NSButton *btnRemove;
  NSButton *btnSave;
  NSButton *btnBrowse;
  NSTextField *txtFileName;
  NSButton *btnContentAdd;
  NSButton *btnContentRemove;
  NSButton *btnContentSave;
  NSTextField *txtCaption;
  NSComboBox *comAlign;
  NSComboBox *comTextAlign;
  NSTextField *txtInTime;
  NSComboBox *comTextAnimation;
  NSTextField *txtStayTime;
  NSComboBox *comStartDirection;
  NSButton *btnTextColor;
  NSTextField *txtTextSize;
  NSComboBox *comStyle;
  NSString *workSpace;
  id ower;
  NSString *bundlePath;
  TableViewProtocol *tableViewProtocol;
  TableViewProtocol *tbContentProtocol;
  PluginSettingsInfo *settingsInfo;
  int32_t selectedIndex;
  int32_t selectContentIndex;
  XMLElement *StyleXML;
  XMLElement *SlideXML;
  NSArray *AlignShortCut;
}

/// One-time set-up, after `workSpace`, `ower` and `bundlePath` have been set: installs the
/// workspace and shows its slides.
- (void)loadDispInfo;
/// Writes the slider document, then has the owner save its position file. The sender is not used.
- (IBAction)onSave:(id)sender;

@property(copy) NSString *workSpace;
/// The settings window's controller; not retained.
@property(nonatomic, assign) id ower;
@property(copy) NSString *bundlePath;

// Outlets, set by the nib and not retained.
@property(nonatomic, assign) IBOutlet NSTableView *tableView;
@property(nonatomic, assign) IBOutlet NSTableView *tbContent;
@property(nonatomic, assign) IBOutlet NSButton *btnAdd;
@property(nonatomic, assign) IBOutlet NSButton *btnRemove;
@property(nonatomic, assign) IBOutlet NSButton *btnSave;
@property(nonatomic, assign) IBOutlet NSButton *btnBrowse;
@property(nonatomic, assign) IBOutlet NSTextField *txtFileName;
@property(nonatomic, assign) IBOutlet NSButton *btnContentAdd;
@property(nonatomic, assign) IBOutlet NSButton *btnContentRemove;
@property(nonatomic, assign) IBOutlet NSButton *btnContentSave;
@property(nonatomic, assign) IBOutlet NSTextField *txtCaption;
@property(nonatomic, assign) IBOutlet NSComboBox *comAlign;
@property(nonatomic, assign) IBOutlet NSComboBox *comTextAlign;
@property(nonatomic, assign) IBOutlet NSTextField *txtInTime;
@property(nonatomic, assign) IBOutlet NSComboBox *comTextAnimation;
@property(nonatomic, assign) IBOutlet NSTextField *txtStayTime;
@property(nonatomic, assign) IBOutlet NSComboBox *comStartDirection;
@property(nonatomic, assign) IBOutlet NSButton *btnTextColor;
@property(nonatomic, assign) IBOutlet NSTextField *txtTextSize;
@property(nonatomic, assign) IBOutlet NSComboBox *comStyle;

@end
