// One layout serves both.
RVSettingsViewController_iPad {}
