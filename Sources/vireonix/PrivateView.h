// The content editor panel: the slides, the text objects (captions) of the selected slide and the
// controls that edit one text object. Loaded from the nib "PrivateView" and placed in the settings
// window by its controller. Main thread only.
#import "Class/GroupsView.h"

#include "Core/document_file.h"

#include <cstdint>
#include <string>

@class ColorPanelDelegate;
@class PluginSettingsInfo;
@class TableViewProtocol;
@class XMLElement;

@interface PrivateView : NSView <NSTextFieldDelegate, DrawnAsAWhole> {
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
  // The slide record whose captions `tbContentProtocol` lists; nil for none.
  NSMutableDictionary *shownSlide;
  // Showing a slide has just deselected a caption.
  BOOL isCaptionLeftForSlide;
  vireonix::core::slider::DocumentFile documentFile;
  // What was last saved, for the sake of its memory.
  std::string documentBytes;
  // The colour choice that is under way: what the colour panel tells, and the button whose colour
  // is being chosen; nil for none.
  ColorPanelDelegate *colorPanelDelegate;
  NSButton *colorButton;
  // The colour panel's session runs; what the session below is to end with after it, or nil.
  BOOL isInColorSession;
  NSNumber *codeForSessionBelow;
}

/// One-time set-up, after `workSpace`, `ower` and `bundlePath` have been set: installs the
/// workspace and shows its slides.
- (void)loadDispInfo;
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

// The slider document: PrivateView+Document.mm.
@interface PrivateView (Document)

/// Writes the slider document, then has the owner save its position file. The sender is not used.
- (IBAction)onSave:(id)sender;

/// The root of the document that new slides and text objects take their shape from, or nil: the
/// bundle's, or the workspace's own where there is no bundle.
- (XMLElement *)getDataXML;
/// Takes the style definitions from that document, where it has some.
- (void)loadStyleXML;
/// Takes the template slide from that document, where it has one.
- (void)loadSlideXML;

@end

// The list of slides: PrivateView+Slides.mm. Every change is saved at once.
@interface PrivateView (Slides)

/// Asks for a picture or movie and inserts it before the slide last shown, or appends it when no
/// slide is selected.
- (IBAction)onAdd:(id)sender;
/// Removes the selected slide, and its file when no other slide uses it.
- (IBAction)onRemove:(id)sender;
/// Asks for a picture or movie in the place of the shown slide's.
- (IBAction)onBrowse:(id)sender;

/// Shows the selected slide and its captions.
- (void)onTableViewChange;

/// Deletes a slide's file, given by its path in the workspace, when exactly one slide uses it. Only
/// a file or link inside the workspace is deleted.
- (void)checkRemoveResource:(NSString *)relativePath;

/// The path of a file that the user chooses, or nil.
- (NSString *)openFile;

@end

// The captions of the selected slide: PrivateView+TextObjects.mm. Every change is saved at once.
@interface PrivateView (TextObjects)

/// What a new text object starts from: the first one of a slide element. Never nil.
- (NSMutableDictionary *)getTextDictTemplate:(XMLElement *)slide;

- (void)controlTextDidChange:(NSNotification *)notification;
- (IBAction)onTypeButtonChange:(id)sender;
/// Adds a text object of the controls' values before the selected one, or at the end.
- (IBAction)onContentAdd:(id)sender;
- (IBAction)onContentRemove:(id)sender;
/// Gives the selected text object the controls' values.
- (IBAction)onContentSave:(id)sender;

/// Either table's selection has changed; sent by their data sources.
- (void)tableViewSelectionDidChange:(NSNotification *)notification;

/// Shows the selected text object in the controls.
- (void)onContentViewChange;

@end

// The colour of a caption: PrivateView+Color.mm.
@interface PrivateView (Color)

/// Lets the user choose the button's colour in the shared colour panel, which is also the selected
/// caption's from then on; returns when the panel has closed. It is closed when the application is
/// left or ends. Does nothing during a choice.
- (IBAction)onColorSelect:(id)sender;

/// Closes the colour panel and takes its colour, when a choice is under way. The panel's modal
/// session ends only after the caller has returned to it.
- (void)endColorChoice;

/// While the colour panel's modal session runs: has the session below it end with `code` as well,
/// and answers YES. Else answers NO.
- (BOOL)endSessionAfterColorChoice:(NSInteger)code;

@end
