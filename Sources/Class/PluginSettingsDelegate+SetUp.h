// The steps of the settings window's set-up and of its dissolution. Only PluginSettingsDelegate's
// own files include this.
#import "Class/PluginSettingsDelegate.h"

@interface PluginSettingsDelegate (SetUp)

/// Makes the controller the fields' delegate and the target of the slider and the buttons.
- (void)wireControls;

/// Instantiates the panel's nib; `privateView` stays nil when the nib yields no panel.
- (void)loadPanel;

/// Chooses the workspace, hands it to the panel and has the panel show it.
- (void)setUpPanel;

/// Puts the panel in the place of `PrivateSettingView`.
- (void)placePanel;

/// Starts the timer that reloads the preview, in the one run-loop mode that the window runs in.
- (void)startPreviewTimer;
- (void)stopPreviewTimer;

/// Makes `delegate` the web view's every delegate.
- (void)wireWebView:(id)delegate;

/// Leaves no view with a reference to the controller.
- (void)detachFromViews;

@end
