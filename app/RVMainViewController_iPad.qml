MainView {}
